#pragma once

#include "support/Damage.h"
#include "support/TemporaryFolder.h"

#include <NereoInspection/FileKind.h>

#include <string>
#include <vector>

/// Compares what a check says of files with what loads do.
class Agreement {
public:
    /// Gives the files this name, whose suffix counts for a configuration, and takes them for this kind.
    Agreement(const std::string& name, Nereo::Inspection::FileKind kind);

    /// Expects of each file that
    /// - a finding ends a load exactly if a load into a new object ends early, and the first of them says
    /// how;
    /// - what a load gives of a file without findings, saved and outlined again, has the same values;
    /// - an outline can be had, whatever stands in the file.
    void expectEach(const std::vector<DamagedFile>& files);
    void expect(const DamagedFile& file);

private:
    TemporaryFolder folder_;
    std::string path_;
    std::string savedPath_;
    Nereo::Inspection::FileKind kind_;
};
