#include "Saving.h"

#include "InputPath.h"
#include "Interruption.h"
#include "Messages.h"
#include "Output.h"

#include <NereoFileIO/WriteWhole.h>
#include <NereoUtility/StringConversion.h>

namespace Nereo::Tool {

namespace {

/// The disk takes no more: what is written further is in vain.
struct WritingFailed {};

QString whatFailed(Io::SaveResult::Status status)
{
    switch (status) {
    case Io::SaveResult::NoPermission:
        return QStringLiteral("may not be written");
    case Io::SaveResult::NoRegularFile:
        return QStringLiteral("is no file");
    case Io::SaveResult::DiskFull:
        return QStringLiteral("finds no room on the disk");
    case Io::SaveResult::NotForced:
        return QStringLiteral("is written, but may be lost in a power failure");
    default:
        return QStringLiteral("can't be written");
    }
}

QString reasonOf(const Io::SaveResult& result)
{
    const QString what = whatFailed(result.status);
    return result.reason.empty() ? what : what + QLatin1String(": ") + Util::toQString(result.reason);
}

} // namespace

void saveFile(const std::string& path, const std::function<void(const Sink& sink)>& write)
{
    const InterruptionDeferral deferral;
    const Io::SaveResult result = Io::writeWhole(path, [&write](QIODevice& device) {
        try {
            write([&device](std::string_view bytes) {
                InterruptionDeferral::throwIfRequested();
                if (device.write(bytes.data(), qint64(bytes.size())) != qint64(bytes.size()))
                    throw WritingFailed();
            });
        } catch (const WritingFailed&) { // of which the device knows
        }
        return true;
    });
    if (!result)
        throw Refusal(about(path, reasonOf(result)));
}

void saveTo(const std::string& path, Output& output, const std::function<void(const Sink& sink)>& write)
{
    if (path == "-")
        write([&output](std::string_view bytes) { output.write(bytes); });
    else
        saveFile(path, write);
}

} // namespace Nereo::Tool
