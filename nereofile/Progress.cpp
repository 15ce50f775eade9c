#include "Progress.h"

#include "Bytes.h"
#include "Interruption.h"
#include "Terminal.h"
#include "Text.h"

#include <unistd.h>

namespace Nereo::Tool {

namespace {

constexpr qint64 longest = 1000; // milliseconds, without a line
constexpr qint64 interval = 100;
constexpr qint64 megabyte = 1000 * 1000;

QString durationText(qint64 seconds)
{
    constexpr int minute = 60;
    return seconds < minute ? QStringLiteral("%1 s").arg(seconds)
                            : QStringLiteral("%1 min %2 s").arg(seconds / minute).arg(seconds % minute);
}

} // namespace

Progress::Progress(QString what) : what_(std::move(what)), isWanted_(isTerminal(STDERR_FILENO))
{
    sinceStart_.start();
}

Progress::~Progress()
{
    eraseProgress();
}

Io::ResultsProgress Progress::function()
{
    return [this](qint64 bytesDone, qint64 bytesInAll) { return update(bytesDone, bytesInAll); };
}

bool Progress::update(qint64 bytesDone, qint64 bytesInAll)
{
    const qint64 now = sinceStart_.elapsed();
    if (isWanted_ && now >= longest && now - shownAt_ >= interval) {
        shownAt_ = now;
        setProgressShown(true);
        const QByteArray text = "\r" + line(bytesDone, bytesInAll).toUtf8() + "\033[K";
        writeAll(STDERR_FILENO, text.constData(), std::size_t(text.size()));
    }
    return !InterruptionDeferral::isRequested();
}

QString Progress::line(qint64 bytesDone, qint64 bytesInAll) const
{
    QString done = QStringLiteral("%1 MB").arg(bytesDone / megabyte);
    if (bytesInAll > 0 && bytesDone > 0 && bytesDone <= bytesInAll) {
        const double share = double(bytesDone) / double(bytesInAll);
        const auto left = qint64(double(sinceStart_.elapsed()) * (1 / share - 1) / 1000);
        done = QStringLiteral("%1 of %2 MB, %3 %, %4 left")
                   .arg(bytesDone / megabyte)
                   .arg(bytesInAll / megabyte)
                   .arg(int(100 * share))
                   .arg(durationText(left));
    }
    // The name gives way, so that the line stays one.
    const int room = columnsOf(STDERR_FILENO) - 1 - done.size() - 2;
    const QString name = oneLine(what_).right(std::max(room, 0));
    return room < 1 ? done.left(columnsOf(STDERR_FILENO) - 1) : name + QLatin1String(": ") + done;
}

} // namespace Nereo::Tool
