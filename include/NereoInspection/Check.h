#pragma once

#include <NereoInspection/Export.h>
#include <NereoInspection/FileKind.h>
#include <NereoInspection/Finding.h>

#include <QByteArray>

#include <functional>
#include <string>
#include <vector>

namespace Nereo::Inspection {

/// How many findings there are, those that were only counted included.
struct FindingCounts {
    qint64 errors = 0;
    qint64 warnings = 0;
    qint64 notes = 0;

    NEREOINSPECTION_EXPORT FindingCounts& operator+=(const FindingCounts& other);
};

/// A file and what is to be said of it, in the order of the file.
struct CheckedFile {
    std::string file; ///< the path as it was given
    FileKind kind = FileKind::Unknown;
    std::vector<Finding> findings;
    FindingCounts counts;
};

struct CheckOptions {
    /// What the files are taken for. Unknown: what their content tells.
    FileKind kind = FileKind::Unknown;

    /// Is told how many bytes of how many of a file have been read, after every few kilobytes. A file that is
    /// gone through more than once is told of each time. It must not throw, and may be empty.
    std::function<void(qint64 bytesDone, qint64 bytesInAll)> progress = {};
};

/// Finds what is wrong with a file, all of it in one pass. Whatever stands in the file, nothing is thrown but
/// std::bad_alloc, and nothing stops. Of one code in one file a thousand findings are listed and the rest
/// counted. Takes at most 64 MiB and twice the size of the file; of results 64 MiB and a bit for each node
/// that the file has room for.
NEREOINSPECTION_EXPORT CheckedFile check(const std::string& path, const CheckOptions& options = {});

/// The same for each of several files.
NEREOINSPECTION_EXPORT std::vector<CheckedFile> check(const std::vector<std::string>& paths,
                                                      const CheckOptions& options = {});

/// The same for the files of one case, and what differs between them: the job, the versions, the transient
/// data, the materials, the number of nodes. Each difference is a warning in the file that comes later in the
/// list.
///
/// Values are compared as loads give them, numbers of which files carry six digits by these; a value of which
/// there is an error already isn't compared. A step size, a stop time or a job that is left at its default
/// says nothing, and neither does a setting that isn't there.
NEREOINSPECTION_EXPORT std::vector<CheckedFile> checkCase(const std::vector<std::string>& paths,
                                                          const CheckOptions& options = {});

/// All of it as one JSON document, in UTF-8 and indented. Keys are always there; what doesn't apply is null.
NEREOINSPECTION_EXPORT QByteArray toJson(const std::vector<CheckedFile>& files);

} // namespace Nereo::Inspection
