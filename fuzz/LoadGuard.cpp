#include "LoadGuard.h"

#include "Requirement.h"

#include <tests/support/ProcessorTime.h>
#include <tests/support/Sanitizers.h>

#include <QString>

#include <atomic>
#include <csignal>
#include <cstddef>
#include <limits>

#ifdef NEREO_ADDRESS_SANITIZER
#include <sanitizer/allocator_interface.h>
#endif

namespace {

constexpr int secondsOfProcessor = 1;
constexpr qint64 bytesOfAnyLoad = 64 << 20;
constexpr qint64 accountedBytesOfASecond = 128 << 20;
constexpr qint64 unlimited = std::numeric_limits<qint64>::max();

std::atomic<qint64> bytesInUse {0}; // negative where a load frees what was there before it
std::atomic<qint64> mostBytes {unlimited};

void stopAtMessage(QtMsgType, const QMessageLogContext&, const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    stopBecause("printed a message");
}

void stopAtTimer(int)
{
    stopBecause("a load takes more processor time than its input accounts for");
}

#ifdef NEREO_ADDRESS_SANITIZER
void countAllocation(const volatile void*, std::size_t size)
{
    if ((bytesInUse += qint64(size)) > mostBytes)
        stopBecause("a load takes more memory than its input accounts for");
}

void countRelease(const volatile void* memory)
{
    bytesInUse -= qint64(__sanitizer_get_allocated_size(memory));
}
#endif

bool watch()
{
    qInstallMessageHandler(stopAtMessage);
    std::signal(processorTimeSignal, stopAtTimer);
#ifdef NEREO_ADDRESS_SANITIZER
    __sanitizer_install_malloc_and_free_hooks(countAllocation, countRelease);
#endif
    return true;
}

} // namespace

LoadGuard::LoadGuard(qint64 accountedBytes)
{
    static const bool isWatched = watch();
    Q_UNUSED(isWatched)
    bytesInUse = 0;
    mostBytes = bytesOfAnyLoad + accountedBytes;
    limitProcessorTime(secondsOfProcessor + int(accountedBytes / accountedBytesOfASecond));
}

LoadGuard::~LoadGuard()
{
    limitProcessorTime(0);
    mostBytes = unlimited;
}
