#include "Trials.h"

#include "ForkedProcess.h"
#include "Shared.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include <sys/wait.h>
#include <unistd.h>

namespace Faults {
namespace {

constexpr unsigned longestRun = 120; // seconds
constexpr int mostFailures = 5;      // that are worth reading

/// A function of Qt in which an allocation can fail, and what then happens that the library can't prevent.
struct KnownPlace {
    const char* function;
    const char* complaint; // null for a crash
};

// The constructor of a text stream connects it to its device, so that it notices its closing. Where memory
// runs out for that, the connection is broken, and making it or closing the device crashes. The streams of
// XML own memory before their constructors have come to the end, and lose it where those fail.
constexpr const char* leak = "memory is lost";
constexpr KnownPlace knownPlaces[] = {
    {"QObjectPrivate::addConnection(int, QObjectPrivate::Connection*)", nullptr},
    {"QXmlStreamReader::QXmlStreamReader(QIODevice*)",                  leak   },
    {"QXmlStreamReader::QXmlStreamReader(QByteArray const&)",           leak   },
    {"QXmlStreamWriter::QXmlStreamWriter(QIODevice*)",                  leak   },
};

/// What a trial leaves for the process that watches it.
struct Record {
    int number;
    bool isComplete;
    bool areAllDone;
    char complaint[100];
    FaultPlace place;
};

[[noreturn]] void runFrom(int number, const std::function<Trial(int)>& trial, Isolation isolation,
                          Record& record)
{
    alarm(longestRun);
    do {
        record.number = number++;
        record.isComplete = false;
        record.complaint[0] = '\0';
        record.place = {};
        const auto [faultHappened, complaint] = trial(record.number);
        record.areAllDone = !faultHappened;
        if (complaint != nullptr)
            std::strncpy(record.complaint, complaint, sizeof record.complaint - 1);
        record.isComplete = true;
    } while (isolation == Isolation::None && !record.areAllDone && record.complaint[0] == '\0');
    endCopy(EXIT_SUCCESS);
}

std::string describeEnd(int status)
{
    if (WIFSIGNALED(status))
        return std::string("signal ") + strsignal(WTERMSIG(status));
    return "exit with " + std::to_string(WEXITSTATUS(status));
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += "\n    " + line;
    return text;
}

bool isKnown(const Record& record)
{
    const std::vector<std::string> functions = record.place.functions();
    const auto matches = [&](const KnownPlace& known) {
        const bool isThere = std::find(functions.begin(), functions.end(), known.function) != functions.end();
        const bool isSo = known.complaint == nullptr
            ? !record.isComplete
            : record.isComplete && std::strcmp(record.complaint, known.complaint) == 0;
        return isThere && isSo;
    };
    return std::any_of(std::begin(knownPlaces), std::end(knownPlaces), matches);
}

} // namespace

Trial runWithFault(Allocator allocator, int number, bool persists, const std::function<void()>& operation)
{
    bool isReported = false;
    const AllocationFault fault(allocator, number, persists);
    try {
        operation();
    } catch (const std::bad_alloc&) {
        isReported = true;
    }
    const bool isHidden = fault.hasHappened() && !isReported;
    return {fault.hasHappened(), isHidden ? "std::bad_alloc doesn't reach the caller" : nullptr};
}

void runTrials(const std::function<Trial(int)>& trial, Isolation isolation)
{
    Shared<Record> shared;
    Record& record = *shared;
    recordFaultsIn(&record.place);
    int failures = 0;
    int known = 0;
    for (record.number = -1; !record.areAllDone && failures < mostFailures;) {
        const pid_t process = fork();
        if (process == 0)
            runFrom(record.number + 1, trial, isolation, record);
        int status = 0;
        waitpid(process, &status, 0);
        if (record.isComplete && record.complaint[0] == '\0' && status == 0)
            continue;
        if (isKnown(record)) {
            ++known;
            continue;
        }
        ++failures;
        ADD_FAILURE() << "allocation " << record.number << ": "
                      << (record.isComplete ? record.complaint : describeEnd(status)) << ", it failed in"
                      << joined(record.place.functions());
    }
    recordFaultsIn(nullptr);
    ::testing::Test::RecordProperty("faults", record.number);
    ::testing::Test::RecordProperty("known", known);
}

} // namespace Faults
