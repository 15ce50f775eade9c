#pragma once

#include <NereoFileIO/ResultsLoadOptions.h>

#include <QElapsedTimer>
#include <QString>

namespace Nereo::Tool {

/// A line on the terminal for what takes longer than a second: how much is done, and how long the rest may
/// take. It is gone when this is. Where standard error is no terminal there is none.
class Progress {
public:
    explicit Progress(QString what);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// What tells it of the progress. It cancels where the program is interrupted.
    Io::ResultsProgress function();

private:
    bool update(qint64 bytesDone, qint64 bytesInAll);
    QString line(qint64 bytesDone, qint64 bytesInAll) const;

    QString what_;
    bool isWanted_;
    QElapsedTimer sinceStart_;
    qint64 shownAt_ = 0;
};

} // namespace Nereo::Tool
