#include "FreeMemory.h"

#include <QFile>

#include <algorithm>
#include <limits>

namespace Nereo::Inspection {

namespace {

constexpr qint64 kibibyte = 1024;
constexpr qint64 usual = 2 * kibibyte * kibibyte * kibibyte;

/// What Linux reckons that can be had without swapping; 0 elsewhere.
qint64 availableMemory()
{
    QFile file(QStringLiteral("/proc/meminfo"));
    const QByteArray facts = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    for (const QByteArray& line : facts.split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() == 3 && words[0] == "MemAvailable:" && words[2] == "kB")
            return words[1].toLongLong() * kibibyte;
    }
    return 0;
}

} // namespace

qint64 freeMemory()
{
    const qint64 available = availableMemory();
    const auto addressable = qint64(std::min(quint64(std::numeric_limits<std::size_t>::max()) / 2,
                                             quint64(std::numeric_limits<qint64>::max())));
    return std::min(available > 0 ? available : usual, addressable);
}

} // namespace Nereo::Inspection
