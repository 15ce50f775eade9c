#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/ResultsDamage.h>
#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoFileIO/ResultsLoadOptions.h>
#include <NereoFileIO/ResultsLoadResult.h>
#include <NereoFileIO/ResultsStatistics.h>

#include <string>
#include <vector>

namespace Nereo::Io {

/// Looks at every value and record of a results file without keeping them: what the values of each field are
/// like, and which nodes have no record, or several.
///
/// Nothing in a file stops the process or throws, whatever the file is; memory that runs out throws
/// std::bad_alloc. The memory doesn't grow with the file but for the nodes: the statistics of all fields take
/// 2.5 KB each, the look at nodes a bit for each record that the file has room for, and at most 32 MiB. A
/// file that announces many more nodes than it has records is gone through several times, unless it is a
/// pipe.
class NEREOFILEIO_EXPORT ResultsScan {
public:
    enum Part : int { Statistics, Damage, StatisticsAndDamage };

    ResultsScan(); ///< of an empty file
    ResultsScan(const ResultsScan& other);
    ResultsScan(ResultsScan&& other) noexcept;
    ResultsScan& operator=(const ResultsScan& other);
    ResultsScan& operator=(ResultsScan&& other) noexcept;
    ~ResultsScan();

    /// Replaces what this object holds where the result is that the file was read to its end; otherwise keeps
    /// it. Only a negative number of fields is a contradiction here: bad nodes and repeated fields are
    /// found and gone on from. A record that is longer than 32 MiB is over the limit.
    ResultsLoadResult scan(const std::string& path, Part part = StatisticsAndDamage,
                           const ResultsProgress& progress = {});

    const ResultsFileHeader& header() const;

    /// Of each field in the header's list, the unknown ones too, over the records that are whole; empty where
    /// they weren't asked for. A repeated record counts as often as it is there.
    const std::vector<ResultsStatistics>& statistics() const;

    const ResultsDamage& damage() const; ///< none where it wasn't asked for

private:
    friend class ResultsFileScan;

    ResultsFileHeader header_;
    std::vector<ResultsStatistics> statistics_;
    ResultsDamage damage_;
};

} // namespace Nereo::Io
