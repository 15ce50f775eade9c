#include "support/Assertions.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFile.h>

#include <gmock/gmock.h>

#include <QFileInfo>

#include <limits>

namespace Nereo::Io {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ResultsFile, StartsEmpty)
{
    const ResultsFile results;
    EXPECT_EQ(results.title(), "");
    EXPECT_EQ(results.dateTimeString(), "");
    EXPECT_EQ(results.nodeCount(), 0);
    EXPECT_EQ(results.elementCount(), 0);
    EXPECT_EQ(results.startingIteration(), 0);
    EXPECT_EQ(results.currentIteration(), 0);
    EXPECT_EQ(results.startingTimeStep(), 0);
    EXPECT_EQ(results.currentTimeStep(), 0);
    EXPECT_EQ(results.currentTime(), 0.0);
    EXPECT_EQ(results.timeStepSize(), 0.0);
    EXPECT_THAT(results.fieldDataCodes(), IsEmpty());
    EXPECT_EQ(results.version(), Util::Version::Current);
    EXPECT_EQ(results.filePath(), "");
}

ResultsFile filledResults()
{
    ResultsFile results;
    results.setTitle("Lüfter");
    results.setDateTimeString("today");
    results.setNodeCount(2);
    results.setElementCount(3);
    results.setIterations(4, 5);
    results.setTimeSteps(6, 7);
    results.setCurrentTime(0.8);
    results.setTimeStepSize(0.9);
    results.setVersion(Util::Version(1, 2, 3, 0));
    results.addFieldDataCode(kT);
    results.addFieldDataCode(kP);
    results.setFieldData(kP, 1, 10.0);
    results.setFieldData(kP, 2, 20.0);
    return results;
}

void expectFilled(const ResultsFile& results)
{
    EXPECT_EQ(results.title(), "Lüfter");
    EXPECT_EQ(results.dateTimeString(), "today");
    EXPECT_EQ(results.nodeCount(), 2);
    EXPECT_EQ(results.elementCount(), 3);
    EXPECT_EQ(results.startingIteration(), 4);
    EXPECT_EQ(results.currentIteration(), 5);
    EXPECT_EQ(results.startingTimeStep(), 6);
    EXPECT_EQ(results.currentTimeStep(), 7);
    EXPECT_EQ(results.currentTime(), 0.8);
    EXPECT_EQ(results.timeStepSize(), 0.9);
    EXPECT_EQ(results.version(), Util::Version(1, 2, 3, 0));
    EXPECT_THAT(results.fieldDataCodes(), ElementsAre(kP, kT)); // ascending
    EXPECT_THAT(results.fieldData(kP), ElementsAre(10.0, 20.0));
    EXPECT_THAT(results.fieldData(kT), ElementsAre(0.0, 0.0));
}

TEST(ResultsFile, KeepsWhatIsSet)
{
    expectFilled(filledResults());
}

TEST(ResultsFile, IsCopiedWhole)
{
    ResultsFile source = filledResults();
    const ResultsFile copy(source);
    ResultsFile assigned;
    assigned.addFieldDataCode(kU);
    EXPECT_EQ(&(assigned = source), &assigned);

    source.setFieldData(kP, 1, -1.0);
    source.setTitle("changed");
    expectFilled(copy);
    expectFilled(assigned);

    const ResultsFile& itself = assigned;
    assigned = itself;
    expectFilled(assigned);
}

TEST(ResultsFile, HasNoValuesOfAFieldThatIsNotThere)
{
    const ResultsFile results = filledResults();
    EXPECT_TRUE(results.containsFieldData(kP));
    EXPECT_FALSE(results.containsFieldData(kU));
    EXPECT_FALSE(results.containsFieldData(-1));
    EXPECT_THAT(results.fieldData(kU), IsEmpty());
}

TEST(ResultsFile, AddsFieldsOfTheNodeCountOfTheMoment)
{
    ResultsFile results;
    results.addFieldDataCode(kU);
    results.setNodeCount(3);
    results.addFieldDataCode(kV);
    results.setNodeCount(1);
    EXPECT_TRUE(results.containsFieldData(kU));
    EXPECT_THAT(results.fieldData(kU), IsEmpty());
    EXPECT_THAT(results.fieldData(kV), ElementsAre(0.0, 0.0, 0.0));
}

TEST(ResultsFile, SharesTheValuesThatItGives)
{
    ResultsFile results = filledResults();
    const QVector<double> values = results.fieldData(kP);
    EXPECT_EQ(values.constData(), results.fieldData(kP).constData());

    results.setFieldData(kP, 2, -1.0);
    EXPECT_THAT(values, ElementsAre(10.0, 20.0));
    EXPECT_THAT(results.fieldData(kP), ElementsAre(10.0, -1.0));
}

TEST(ResultsFile, SavesNothing)
{
    const ResultsFile results = filledResults();
    EXPECT_TRUE(results.saveTo("/nonexistent/folder/results.res"));
    EXPECT_EQ(results.filePath(), "/nonexistent/folder/results.res");
    EXPECT_FALSE(QFileInfo::exists("/nonexistent"));
}

TEST(ResultsFileDeathTest, StopsAtAFieldThatIsAlreadyThere)
{
    ResultsFile results = filledResults();
    EXPECT_ASSERTION(results.addFieldDataCode(kP), "false", "FileIO/ResultsFile, line 166");
    results.setNodeCount(-1);
    EXPECT_ASSERTION(results.addFieldDataCode(kP), "false", "FileIO/ResultsFile, line 166");
}

TEST(ResultsFileDeathTest, StopsAtANegativeNodeCount)
{
    ResultsFile results;
    results.setNodeCount(-1);
    EXPECT_COUNT_ASSERTION(results.addFieldDataCode(kP), "FileIO/ResultsFile");
}

TEST(ResultsFileDeathTest, StopsAtAValueOfAFieldThatIsNotThere)
{
    ResultsFile results = filledResults();
    EXPECT_ASSERTION(results.setFieldData(kU, 1, 1.0), "false", "FileIO/ResultsFile, line 187");
}

TEST(ResultsFileDeathTest, StopsAtAValueOfANodeThatIsNotThere)
{
    ResultsFile results = filledResults();
    for (const int node : {0, -1, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_INDEX_ASSERTION(results.setFieldData(kP, node, 1.0), "QVector<T>::operator[]",
                               "FileIO/ResultsFile");
}

} // namespace
} // namespace Nereo::Io
