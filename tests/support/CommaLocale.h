#pragma once

#include <gtest/gtest.h>

/// The host program of a German user: the C library, C++ and Qt all have a comma in their numbers, and points
/// between groups of digits. Nothing that the library reads or writes may differ by that.
///
/// The locale is that of the process's environment. One without a comma fails the run rather than test
/// nothing, and so does a test that leaves another locale behind.
class CommaLocale : public ::testing::Environment {
public:
    void SetUp() override;
    void TearDown() override;
};
