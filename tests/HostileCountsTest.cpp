#include "support/LoadWatch.h"
#include "support/OwnProcess.h"
#include "support/ResultsBytes.h"
#include "support/TemporaryFolder.h"

#include "benchmarks/Memory.h"

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoFileIO/ResultsScan.h>

#include <gmock/gmock.h>

#include <sys/resource.h>

#include <limits>
#include <new>

/// Small files that announce much. A load takes the memory that the announced fields take, and no time or
/// memory beyond that.

namespace Nereo::Io {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Order = QDataStream::ByteOrder;
constexpr Order bothOrders[] = {QDataStream::LittleEndian, QDataStream::BigEndian};

constexpr int twoBillion = 2'000'000'000;
constexpr int overflows21 = 204'522'253; // times 21, the bytes of a name, is 17 in 32 bits
constexpr int overflows8 = 0x2000'0000;  // times 8, the bytes of a value, is 0 in 32 bits
constexpr int smallest = std::numeric_limits<int>::min();
constexpr int largest = std::numeric_limits<int>::max();

constexpr rlim_t MiB = 1024 * 1024;
constexpr rlim_t toSpare = 64 * MiB;

/// From here on the process can have only so much more memory.
void allowMemory(rlim_t more)
{
    const rlim_t limit = rlim_t(memory("VmSize:")) + more;
    const rlimit limits {limit, limit};
    ASSERT_EQ(setrlimit(RLIMIT_AS, &limits), 0);
}

/// The field block that begins at offset 346 as far as there are bytes, 400 of them in the whole file.
std::string smallFile(Order order, qint32 nodeCount, qint32 fieldCount,
                      std::initializer_list<const char*> names)
{
    ResultsBytes bytes(order);
    bytes.header(nodeCount).run().integer(fieldCount);
    for (const char* name : names)
        bytes.text(name, 21);
    return bytes.text("", 400 - bytes.bytes().size()).bytes().toStdString();
}

class HostileCountsDeathTest : public ::testing::Test {
protected:
    /// Loads the file in a process that can't have more memory than is announced, and some to spare.
    template <class Check>
    void loadWith(rlim_t announced, const std::string& bytes, Check check)
    {
        const std::string path = folder.write("hostile.res", bytes);
        inAProcessOfItsOwn([&] {
            allowMemory(announced + toSpare);
            ResultsFile results;
            const LoadWatch watch("of hostile counts");
            check(results, path);
        });
    }

    const TemporaryFolder folder;
};

TEST_F(HostileCountsDeathTest, FindOnlyTheFieldsWhoseNamesAreThere)
{
    for (const Order order : bothOrders) {
        for (const int fieldCount : {twoBillion, overflows21, overflows8, largest}) {
            const std::string bytes = smallFile(order, 3, fieldCount, {"kU", "kP"});
            loadWith(0, bytes, [&](ResultsFile& results, const std::string& path) {
                EXPECT_TRUE(results.loadFrom(path));
                EXPECT_EQ(results.fieldDataCodes(), (QList<int> {kU, kP}));
                EXPECT_THAT(results.fieldData(kP), AllOf(SizeIs(3), Each(0.0)));
            });
        }
    }
}

TEST_F(HostileCountsDeathTest, TakeNoMemoryForNodesWithoutFields)
{
    for (const Order order : bothOrders) {
        for (const int nodeCount : {twoBillion, overflows8, largest, -1, smallest}) {
            for (const int fieldCount : {0, 1, twoBillion, overflows21, overflows8, largest}) {
                const std::string bytes = smallFile(order, nodeCount, fieldCount, {"kFoo", "kBar"});
                loadWith(0, bytes, [&](ResultsFile& results, const std::string& path) {
                    EXPECT_TRUE(results.loadFrom(path));
                    EXPECT_EQ(results.nodeCount(), nodeCount);
                    EXPECT_THAT(results.fieldDataCodes(), IsEmpty());
                });
            }
        }
    }
}

TEST_F(HostileCountsDeathTest, ThrowWhereAFieldIsTooLarge)
{
    for (const Order order : bothOrders) {
        for (const int nodeCount : {200'000'000, overflows8, twoBillion, largest}) { // 1.6 GB, and more
            for (const int fieldCount : {1, twoBillion, largest}) {
                const std::string bytes = smallFile(order, nodeCount, fieldCount, {"kU"});
                loadWith(0, bytes, [&](ResultsFile& results, const std::string& path) {
                    EXPECT_THROW(results.loadFrom(path), std::bad_alloc);
                    EXPECT_THAT(results.fieldDataCodes(), IsEmpty());
                    results.setNodeCount(1); // and the object can be used
                    results.addFieldDataCode(kU);
                    EXPECT_THAT(results.fieldData(kU), SizeIs(1));
                });
            }
        }
    }
}

TEST_F(HostileCountsDeathTest, TakeTheMemoryThatTheFieldsAnnounce)
{
    constexpr int nodeCount = 4 * MiB;
    constexpr rlim_t fieldSize = nodeCount * sizeof(double);
    for (const Order order : bothOrders) {
        const std::string bytes = smallFile(order, nodeCount, 100, {"kU", "kP"}); // ends within the names
        loadWith(2 * fieldSize, bytes, [&](ResultsFile& results, const std::string& path) {
            EXPECT_TRUE(results.loadFrom(path));
            EXPECT_THAT(results.fieldData(kU), SizeIs(nodeCount));
            EXPECT_THAT(results.fieldData(kP), SizeIs(nodeCount));
        });
    }
}

TEST_F(HostileCountsDeathTest, StopTheProcessWhereNegative)
{
    for (const Order order : bothOrders) {
        for (const int negative : {-1, -twoBillion, smallest}) {
            for (const std::string& bytes :
                 {smallFile(order, 3, negative, {"kU"}), smallFile(order, twoBillion, negative, {}),
                  smallFile(order, negative, 1, {"kU"}), smallFile(order, negative, twoBillion, {"kU"})}) {
                const std::string path = folder.write("hostile.res", bytes);
                EXPECT_DEATH(ResultsFile().loadFrom(path),
                             HasSubstr("ASSERT failure in QVector::QVector: "
                                       "\"Size must be greater than or equal to 0.\""));
            }
        }
    }
}

TEST_F(HostileCountsDeathTest, NeitherStopNorExhaustWhatSaysWhatBecameOfIt)
{
    constexpr int counts[] = {3, twoBillion, overflows21, overflows8, largest, smallest};
    for (const Order order : bothOrders) {
        for (const int nodeCount : counts) {
            for (const int fieldCount : counts) {
                const std::string bytes = smallFile(order, nodeCount, fieldCount, {"kU", "kP"});
                loadWith(0, bytes, [&](ResultsFile& results, const std::string& path) {
                    ResultsLoadOptions options;
                    options.memoryLimit = 16 * MiB;
                    const ResultsLoadResult result = results.loadFrom(path, options);
                    EXPECT_TRUE(result.outcome == ResultsLoadResult::CutShort
                                || result.outcome == ResultsLoadResult::ContradictsItself
                                || result.outcome == ResultsLoadResult::OverLimit);
                    EXPECT_EQ(result.isLoaded(), nodeCount == 3 && fieldCount >= 0);
                    ResultsFileHeader header;
                    EXPECT_TRUE(header.readFrom(path));
                    EXPECT_EQ(header.nodeCount(), nodeCount);
                    ResultsScan scan;
                    EXPECT_EQ(scan.scan(path).isLoaded(), fieldCount >= 0);
                });
            }
        }
    }
}

TEST_F(HostileCountsDeathTest, OfFlagsAreComparedWithTheFlagsThatAreThere)
{
    for (const char* count : {"2000000000", "2147483647", "-1", "-2147483648", "99999999999999999999"}) {
        const std::string path = folder.write(
            "hostile.ctl", std::string("one\ntwo\n *** Flag section\n") + count + "\nname value\n");
        const auto load = [&path] {
            allowMemory(toSpare);
            const LoadWatch watch("of hostile counts");
            ControlFile().loadFrom(path);
        };
        EXPECT_DEATH(load(),
                     HasSubstr("ASSERT: \"controlFile_.flagCount() == count\" in file "
                               "FileIO/ControlFileTextReader"))
            << count;
    }
}

/// Few bytes of entities that stand for a thousand million others.
std::string bombIn(const std::string& root, const std::string& element)
{
    std::string text = "<!DOCTYPE " + root + " [<!ENTITY e0 \"bang\">";
    for (int i = 1; i <= 9; ++i) {
        text += "<!ENTITY e" + std::to_string(i) + " \"";
        for (int repeat = 0; repeat < 10; ++repeat)
            text += "&e" + std::to_string(i - 1) + ';';
        text += "\">";
    }
    return text + "]><" + root + '>' + element + "</" + root + '>';
}

TEST(HostileEntitiesDeathTest, EndTheLoadOfADocument)
{
    TemporaryFolder folder;
    const std::string config =
        folder.write("bomb.xml", bombIn("Nereo2Config", "<MaxIter>7</MaxIter><AwsRegion>&e9;</AwsRegion>"));
    const std::string materials =
        folder.write("materials.xml", bombIn("material_database", "<material><name>&e9;</name></material>"));
    inAProcessOfItsOwn([&] {
        allowMemory(toSpare);
        const LoadWatch watch("of hostile entities");
        Nereo2ConfigFile loadedConfig;
        EXPECT_FALSE(loadedConfig.loadFrom(config));
        EXPECT_EQ(loadedConfig.setting("MaxIter").valueAsInt(), 7); // which comes before it
        MaterialDatabaseFile loadedMaterials;
        EXPECT_FALSE(loadedMaterials.loadFrom(materials));
        EXPECT_EQ(loadedMaterials.count(), 1);
    });
}

} // namespace
} // namespace Nereo::Io
