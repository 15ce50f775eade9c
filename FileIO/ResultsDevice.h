#pragma once

#include <QFile>

namespace Nereo::Io {

/// A results file that is read once from its start, and knows whether the first short read was the end of it
/// or a failure of the disk. Behind that one nothing is read, even if the disk would give it later.
class ResultsDevice : public QFile {
public:
    /// Whether the last read gave less than there is. A file that has been cut meanwhile has just ended.
    bool hasFailed() const { return hasFailed_; }

    qint64 sizeWhenOpened() const { return sizeWhenOpened_; } ///< -1 where it has none, as a pipe

    bool open(OpenMode mode) override;
    bool seek(qint64 position) override; ///< to read again from there

protected:
    qint64 readData(char* data, qint64 maxSize) override;

private:
    bool failedBehind(qint64 count);

    qint64 sizeWhenOpened_ = -1;
    qint64 bytesRead_ = 0;
    bool hasEnded_ = false;
    bool hasFailed_ = false;
};

} // namespace Nereo::Io
