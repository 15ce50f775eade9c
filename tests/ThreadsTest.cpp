#include "support/OwnProcess.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/MaterialType.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/PropertyType.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/VariationType.h>
#include <NereoInspection/Check.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

/// Threads that each have objects of their own, from the first thing that the process does with the library.
/// Most is shown under ThreadSanitizer: the preset "tsan".

namespace Nereo::Io {
namespace {

constexpr int threadCount = 8;

// What a thread does with a kind of file, with files of its own under a prefix. Each gives all that comes of
// it.

template <class FileKind>
std::string loadAndSave(const char* sample, const std::string& saved)
{
    FileKind file;
    const bool isLoaded = file.loadFrom(sample);
    const bool isSaved = file.saveTo(saved);
    return isLoaded && isSaved ? readBytes(saved) : "failed";
}

std::string configurationAsXml(const std::string& prefix)
{
    return loadAndSave<Nereo2ConfigFile>(NEREO_SAMPLES_DIR "/NEREO2_default.xml", prefix + "config.xml");
}

std::string configurationAsText(const std::string& prefix)
{
    return loadAndSave<Nereo2ConfigFile>(NEREO_SAMPLES_DIR "/solver.cfg", prefix + "config.cfg");
}

std::string controlFile(const std::string& prefix)
{
    return loadAndSave<ControlFile>(NEREO_SAMPLES_DIR "/cavity.ctl", prefix + "control.ctl");
}

std::string materialDatabase(const std::string& prefix)
{
    return loadAndSave<MaterialDatabaseFile>(NEREO_SAMPLES_DIR "/materials.xml", prefix + "materials.xml");
}

std::string geometryAndBoundaries(const std::string& prefix)
{
    GbiFile file;
    file.materialDatabase().add(Material("fluid"));
    BoundaryCondition wall(kU);
    wall.setValue(0.5);
    file.addSurfaceBoundaryCondition(wall);
    return file.saveTo(prefix + "job.gbi") ? readBytes(prefix + "job.gbi") : "failed";
}

std::string results(const std::string&)
{
    std::string all;
    for (const char* sample : {NEREO_SAMPLES_DIR "/cavity.res", NEREO_SAMPLES_DIR "/cavity-be.res"}) {
        ResultsFile file;
        all += file.loadFrom(sample) ? file.title() : "failed";
        for (const int code : file.fieldDataCodes()) {
            const QVector<double> values = file.fieldData(code);
            all.append(reinterpret_cast<const char*>(values.constData()),
                       std::size_t(values.size()) * sizeof(double));
        }
    }
    return all;
}

std::string codeNames(const std::string&)
{
    std::string all;
    for (int code = 1; code < kNone; ++code)
        all += CodeNameTable::instance().nameForCode(code, true).toStdString() + '\n';
    return all;
}

std::string displayNames(const std::string&)
{
    const QString names[] = {Clt::MaterialType::HeatSink.displayName(),
                             Clt::PropertyType::Density.displayName(),
                             Clt::VariationType::FanCurve.displayName()};
    std::string all = Clt::MaterialType::displayNames().join('\n').toStdString();
    for (const QString& name : names)
        all += '\n' + name.toStdString();
    return all;
}

std::string checks(const std::string& prefix)
{
    std::string path = prefix + "broken.cfg";
    writeBytes(path, "MaxItr x\nMaxIter x\n");
    std::vector<Inspection::CheckedFile> files =
        Inspection::check({path, NEREO_SAMPLES_DIR "/NEREO2_default.xml", NEREO_SAMPLES_DIR "/solver.cfg",
                           NEREO_SAMPLES_DIR "/cavity.ctl", NEREO_SAMPLES_DIR "/materials.xml",
                           NEREO_SAMPLES_DIR "/cavity.res"});
    files.front().file.clear(); // which each thread has another of
    return Inspection::toJson(files).toStdString();
}

const struct {
    const char* name;
    std::string (*run)(const std::string& prefix);
} everyWork[] = {
    {"configurationAsXml",    configurationAsXml   },
    {"configurationAsText",   configurationAsText  },
    {"controlFile",           controlFile          },
    {"materialDatabase",      materialDatabase     },
    {"geometryAndBoundaries", geometryAndBoundaries},
    {"results",               results              },
    {"codeNames",             codeNames            },
    {"displayNames",          displayNames         },
    {"checks",                checks               },
};
constexpr int workCount = int(std::size(everyWork));

/// All work, beginning with that of an index and going round.
std::vector<std::string> workFrom(int first, const std::string& prefix)
{
    std::vector<std::string> outcomes(workCount);
    for (int i = first; i < first + workCount; ++i)
        outcomes[std::size_t(i % workCount)] = everyWork[i % workCount].run(prefix);
    return outcomes;
}

/// Lets all threads go on at once, when the last of them is there.
class StartingLine {
public:
    void wait()
    {
        ++waiting_;
        while (waiting_ < threadCount)
            std::this_thread::yield();
    }

private:
    std::atomic<int> waiting_ {0};
};

/// Runs the threads, each from the work that is first for its number, and compares all that comes of them
/// with what one thread alone gives.
template <class FirstWork>
void expectTheSameOnEightThreads(FirstWork firstWork)
{
    const TemporaryFolder folder;
    const auto prefixOf = [&folder](int thread) { return folder.path(std::to_string(thread) + '-'); };
    std::vector<std::string> outcomes[threadCount];
    StartingLine start;
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&, i] {
            start.wait();
            outcomes[i] = workFrom(firstWork(i), prefixOf(i));
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    const std::vector<std::string> expected = workFrom(0, prefixOf(threadCount));
    EXPECT_EQ(std::count(expected.begin(), expected.end(), "failed"), 0);
    for (const std::vector<std::string>& outcome : outcomes)
        EXPECT_TRUE(outcome == expected);
}

TEST(ThreadsDeathTest, MayBeginWithDifferentKinds)
{
    inAProcessOfItsOwn([] { expectTheSameOnEightThreads([](int thread) { return thread % workCount; }); });
}

class ThreadsOnOneKindDeathTest : public ::testing::TestWithParam<int> {};

TEST_P(ThreadsOnOneKindDeathTest, MayBeginAllAtOnce)
{
    inAProcessOfItsOwn([] { expectTheSameOnEightThreads([](int) { return GetParam(); }); });
}

INSTANTIATE_TEST_SUITE_P(EachKind, ThreadsOnOneKindDeathTest, ::testing::Range(0, workCount),
                         [](const auto& tested) { return everyWork[tested.param].name; });

} // namespace
} // namespace Nereo::Io
