#include "Checked.h"

#include "support/OwnProcess.h"
#include "support/Sanitizers.h"

#include "benchmarks/Memory.h"

/// Files that are made to take time and memory. A check takes no more of the latter than 64 MiB and twice the
/// file.

namespace Nereo::Inspection {
namespace {

constexpr int MiB = 1024 * 1024;
constexpr int large = 40 * MiB;

std::string repeated(const std::string& text, int size)
{
    std::string whole;
    whole.reserve(std::size_t(size) + text.size());
    while (whole.size() < std::size_t(size))
        whole += text;
    return whole;
}

/// Checks a file in a process of its own, which may have so much memory and no more.
void expectInProportion(const std::string& name, const std::string& bytes, qint64 findings)
{
    const TemporaryFolder folder;
    const std::string path = folder.write(name, bytes);
    inAProcessOfItsOwn([&] {
        [[maybe_unused]] const double before = memory("VmRSS:");
        const CheckedFile checked = check(path);
        EXPECT_EQ(checked.counts.errors + checked.counts.warnings, findings);
#ifndef NEREO_SANITIZER
        EXPECT_LE(memory("VmHWM:") - before, 64.0 * MiB + 2.0 * double(bytes.size()));
#endif
    });
}

TEST(HostileFilesDeathTest, TakeMemoryInProportion)
{
    struct Row {
        const char* name;
        std::string bytes;
        qint64 findings;
    };
    const Row rows[] = {
        {"line.cfg",    "AnalyzePath " + std::string(large,            'x'),                                   0},
        {"number.cfg",  "MaxIter " + std::string(large,                'x'),                                   1},
        {"key.cfg",     "MaxIter 5\n" + std::string(large,             'x'),                                   1},
        {"text.xml",
         "<Nereo2Config><AnalyzePath>" + std::string(large,            'x') + "</AnalyzePath></Nereo2Config>", 0},
        {"number.xml",  "<Nereo2Config><MaxIter>" + std::string(large, 'x') + "</MaxIter></Nereo2Config>",     1},
        {"comment.xml", "<Nereo2Config><!--" + std::string(large,      'x') + "--></Nereo2Config>",            0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        expectInProportion(row.name, row.bytes, row.findings);
    }
}

TEST(HostileFilesDeathTest, MayHaveAMillionFaults)
{
    constexpr int size = 10'000'000;
    expectInProportion("numbers.cfg", repeated("MaxIter x\n", size), 1'999'999);
    expectInProportion("keys.cfg", "MaxIter 5\n" + repeated("Unheard x\n", size), 1'000'000);
    expectInProportion("bytes.cfg", repeated("Width 5 \xFF\n", size), 1'999'999);
    expectInProportion("elements.xml", "<Nereo2Config>" + repeated("<Other/>\n\n", size) + "</Nereo2Config>",
                       1'000'000);
}

} // namespace
} // namespace Nereo::Inspection
