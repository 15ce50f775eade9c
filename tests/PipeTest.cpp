#include "support/Pipe.h"
#include "support/SameContent.h"
#include "support/TemporaryFolder.h"

#include "FileIO/ResultsFileHeaderReader.h"

#include <NereoFileIO/ResultsScan.h>

/// Files that can be read only once and have no size.

namespace Nereo::Io {
namespace {

template <class FileKind>
void expectSameFromPipe(const std::string& name)
{
    const std::string sample = std::string(NEREO_SAMPLES_DIR "/") + name;
    FileKind expected;
    ASSERT_TRUE(expected.loadFrom(sample));
    const TemporaryFolder folder;
    const Pipe pipe(folder.path(name), readBytes(sample));
    FileKind loaded;
    EXPECT_TRUE(loaded.loadFrom(pipe.path()));
    expectSameContent(loaded, expected);
}

TEST(Pipe, GivesAConfiguration)
{
    expectSameFromPipe<Nereo2ConfigFile>("NEREO2_default.xml");
}

TEST(Pipe, GivesAControlFile)
{
    expectSameFromPipe<ControlFile>("cavity.ctl");
}

TEST(Pipe, GivesAMaterialDatabase)
{
    expectSameFromPipe<MaterialDatabaseFile>("materials.xml");
}

TEST(Pipe, GivesResultsInEitherByteOrder)
{
    expectSameFromPipe<ResultsFile>("cavity.res");
    expectSameFromPipe<ResultsFile>("cavity-be.res");
}

TEST(Pipe, GivesAScanOfResults)
{
    for (const char* name : {"cavity.res", "cavity-be.res"}) {
        const std::string sample = std::string(NEREO_SAMPLES_DIR "/") + name;
        ResultsScan expected;
        ASSERT_TRUE(expected.scan(sample).isLoaded());
        const TemporaryFolder folder;
        const Pipe pipe(folder.path(name), readBytes(sample));
        ResultsScan scanned;
        EXPECT_TRUE(scanned.scan(pipe.path()).isLoaded());
        EXPECT_EQ(scanned.header().bytesAnnounced(), expected.header().bytesAnnounced());
        EXPECT_EQ(scanned.damage().missingNodes, expected.damage().missingNodes);
        ASSERT_EQ(scanned.statistics().size(), expected.statistics().size());
        for (std::size_t i = 0; i < expected.statistics().size(); ++i)
            EXPECT_EQ(scanned.statistics()[i].mean, expected.statistics()[i].mean);
    }
}

TEST(Pipe, GivesAHeaderOfResultsThroughAStream)
{
    const TemporaryFolder folder;
    const Pipe pipe(folder.path("cavity.res"), readBytes(NEREO_SAMPLES_DIR "/cavity.res"));
    QFile file(QString::fromStdString(pipe.path()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QDataStream in(&file);
    ResultsFileHeader expected;
    ResultsFileHeader header;
    ASSERT_TRUE(expected.readFrom(NEREO_SAMPLES_DIR "/cavity.res"));
    EXPECT_TRUE(ResultsFileHeaderReader(header).read(in));
    EXPECT_EQ(header.nodeCount(), expected.nodeCount());
    EXPECT_EQ(header.wholeRecords(), -1); // which nobody can know
}

TEST(Pipe, GivesMoreThanItHoldsAtOnce)
{
    std::string points;
    for (int i = 0; i < 10000; ++i)
        points += "<point><x>1</x><y>2.5</y></point>";
    const TemporaryFolder folder;
    const Pipe pipe(folder.path("materials.xml"),
                    "<material_database><material type='fluid'><property type='viscosity'>" + points
                        + "</property></material></material_database>");
    MaterialDatabaseFile database;
    EXPECT_TRUE(database.loadFrom(pipe.path()));
    ASSERT_EQ(database.count(), 1);
    EXPECT_EQ(database.material(0).property("viscosity").pointCount(), 10000);
}

} // namespace
} // namespace Nereo::Io
