#pragma once

#include <gmock/gmock.h>

/// The statement stops the process and reports this condition and place, as in: "false", "FileIO/Setting,
/// line 41".
#define EXPECT_ASSERTION(statement, condition, place)                                                        \
    EXPECT_DEATH(statement, ::testing::HasSubstr("ASSERT: \"" condition "\" in file " place "\n"))

/// The statement stops the process at an index that isn't there, in the name of an operation of Qt's
/// containers and of a source of the library, as in: "QList<T>::operator[]", "FileIO/GbiFile".
#define EXPECT_INDEX_ASSERTION(statement, operation, source)                                                 \
    EXPECT_DEATH(statement,                                                                                  \
                 ::testing::HasSubstr("ASSERT failure in " operation                                         \
                                      ": \"index out of range\", file " source ", line "))

/// The statement stops the process at a negative number of items, as in: "FileIO/ResultsFile".
#define EXPECT_COUNT_ASSERTION(statement, source)                                                            \
    EXPECT_DEATH(statement,                                                                                  \
                 ::testing::HasSubstr("ASSERT failure in QVector::QVector: \"Size must be "                  \
                                      "greater than or equal to 0.\", file " source ", line "))
