#include "ResultsDevice.h"

namespace Nereo::Io {

bool ResultsDevice::open(OpenMode mode)
{
    if (!QFile::open(mode))
        return false;
    sizeWhenOpened_ = isSequential() ? -1 : size();
    return true;
}

bool ResultsDevice::seek(qint64 position)
{
    const bool isThere = QFile::seek(position);
    if (isThere) {
        bytesRead_ = position;
        hasEnded_ = false;
        hasFailed_ = false;
    }
    return isThere;
}

qint64 ResultsDevice::readData(char* data, qint64 maxSize)
{
    if (hasEnded_)
        return hasFailed_ ? -1 : 0;
    const qint64 count = QFile::readData(data, maxSize);
    if (count < maxSize) {
        hasEnded_ = true;
        hasFailed_ = failedBehind(count);
    }
    bytesRead_ += qMax(count, qint64(0));
    return count;
}

/// QFile says the same of a failure behind some bytes as of the end of the file, that there is less than was
/// asked for. But the end is where the file said that it would be, or says so now.
bool ResultsDevice::failedBehind(qint64 count)
{
    if (count < 0)
        return true;
    const qint64 end = bytesRead_ + count;
    if (end < sizeWhenOpened_)
        return end < size();
    char next;
    return sizeWhenOpened_ <= 0 && count > 0
        && QFile::readData(&next, 1) != 0; // of a pipe, or a size unknown
}

} // namespace Nereo::Io
