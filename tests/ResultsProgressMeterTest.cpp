#include "FileIO/ResultsProgressMeter.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace Nereo::Io {
namespace {

using Calls = std::vector<std::pair<qint64, qint64>>;

constexpr qint64 gibibyte = qint64(1) << 30;

TEST(ResultsProgressMeter, CallsAtOnceWhenMuchHasBeenRead)
{
    Calls calls;
    const ResultsProgress progress = [&](qint64 done, qint64 all) {
        calls.emplace_back(done, all);
        return true;
    };
    ResultsProgressMeter meter(progress);
    meter.setBytesInAll(3 * gibibyte);
    EXPECT_TRUE(meter.advanceTo(gibibyte));
    EXPECT_TRUE(meter.advanceTo(2 * gibibyte));
    EXPECT_TRUE(meter.finish());
    EXPECT_FALSE(meter.isCancelled());
    const Calls expected {
        {gibibyte,     3 * gibibyte},
        {2 * gibibyte, 3 * gibibyte},
        {2 * gibibyte, 3 * gibibyte}
    };
    EXPECT_EQ(calls, expected);
}

TEST(ResultsProgressMeter, StaysCancelledWithoutAnotherCall)
{
    int calls = 0;
    const ResultsProgress progress = [&](qint64, qint64) {
        ++calls;
        return false;
    };
    ResultsProgressMeter meter(progress);
    EXPECT_FALSE(meter.advanceTo(gibibyte));
    EXPECT_TRUE(meter.isCancelled());
    EXPECT_FALSE(meter.advanceTo(2 * gibibyte));
    EXPECT_FALSE(meter.advanceTo(2 * gibibyte + 1));
    EXPECT_FALSE(meter.finish());
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace Nereo::Io
