#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

/// Runs the body of a test in a process of its own, for what can be done only once in a process, or not be
/// undone.
template <class Body>
void inAProcessOfItsOwn(Body body)
{
    const auto run = [&] {
        body();
        std::exit(::testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
    };
    EXPECT_EXIT(run(), ::testing::ExitedWithCode(EXIT_SUCCESS), "");
}
