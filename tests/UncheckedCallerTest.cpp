#include "support/Assertions.h"

#include <NereoFileIO/BoundaryCondition.h>
#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ResultsFile.h>

#include <gmock/gmock.h>

#include <QList>
#include <QString>
#include <QVector>

// A caller whose own instances of Qt's containers check nothing. They are built without optimisation and
// exported, so that they would serve the library too if it left the choice to the dynamic linker.
#if !defined(QT_NO_DEBUG) || defined(QT_FORCE_ASSERTS)
#error "This program is to be compiled with QT_NO_DEBUG and without QT_FORCE_ASSERTS"
#endif

namespace Nereo::Io {
namespace {

TEST(UncheckedCaller, ChecksNoIndexItself)
{
    // Index 0 of an empty container is out of range, but its place is reserved.
    QVector<QString> names;
    names.reserve(1);
    EXPECT_EQ(&names.at(0), names.constData());

    QList<double> values;
    values.reserve(1);
    const QList<double>& constantValues = values;
    EXPECT_EQ(&values[0], &*values.begin());
    EXPECT_EQ(&constantValues[0], &*constantValues.begin());
    values.removeAt(0);
    EXPECT_EQ(values.size(), 0);
}

TEST(UncheckedCaller, IsStoppedByTheLibrarysChecksOfFields)
{
    QVector<double> values;
    values.reserve(1);
    EXPECT_EQ(&values[0], values.constData());

    ResultsFile results;
    results.addFieldDataCode(kU);
    EXPECT_INDEX_ASSERTION(results.setFieldData(kU, 1, 1.0), "QVector<T>::operator[]", "FileIO/ResultsFile");
    results.setNodeCount(-1);
    EXPECT_COUNT_ASSERTION(results.addFieldDataCode(kP), "FileIO/ResultsFile");
}

TEST(UncheckedCaller, IsStoppedByTheLibrarysChecks)
{
    BoundaryCondition condition;
    EXPECT_INDEX_ASSERTION(condition.extraValue(0), "QList<T>::operator[]", "FileIO/BoundaryCondition");
    EXPECT_INDEX_ASSERTION(condition.setExtraValue(0, 1.0), "QList<T>::operator[]",
                           "FileIO/BoundaryCondition");
    EXPECT_INDEX_ASSERTION(condition.removeExtraValue(0), "QList<T>::removeAt", "FileIO/BoundaryCondition");
    EXPECT_INDEX_ASSERTION(CodeNameTable::instance().nameForCode(-1, false), "QVector<T>::at",
                           "FileIO/CodeNameTable");
}

} // namespace
} // namespace Nereo::Io
