#include <NereoFileIO/ResultsScan.h>

#include "FileAccess.h"
#include "ResultsDevice.h"
#include "ResultsFileScan.h"

#include <utility>

namespace Nereo::Io {

ResultsScan::ResultsScan() = default;
ResultsScan::ResultsScan(const ResultsScan& other) = default;
ResultsScan::ResultsScan(ResultsScan&& other) noexcept = default;
ResultsScan& ResultsScan::operator=(const ResultsScan& other) = default;
ResultsScan& ResultsScan::operator=(ResultsScan&& other) noexcept = default;
ResultsScan::~ResultsScan() = default;

ResultsLoadResult ResultsScan::scan(const std::string& path, Part part, const ResultsProgress& progress)
{
    ResultsDevice device;
    if (!openFile(device, path, QIODevice::ReadOnly))
        return {};
    ResultsScan scanned;
    QDataStream in(&device);
    const ResultsLoadResult result = ResultsFileScan(scanned, part, progress).read(in, &device);
    if (result.isLoaded())
        *this = std::move(scanned);
    return result;
}

const ResultsFileHeader& ResultsScan::header() const
{
    return header_;
}

const std::vector<ResultsStatistics>& ResultsScan::statistics() const
{
    return statistics_;
}

const ResultsDamage& ResultsScan::damage() const
{
    return damage_;
}

} // namespace Nereo::Io
