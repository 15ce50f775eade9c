#include <Inspection/NearestName.h>

#include <gtest/gtest.h>

namespace Nereo::Inspection {
namespace {

TEST(NearestNameTest, FindsWhatSomebodyMeant)
{
    struct Row {
        const char* word;
        const char* nearest;
    };
    constexpr Row rows[] = {
        {"MaxIter",   "MaxIter" },
        {"maxiter",   "MaxIter" },
        {"MaxItr",    "MaxIter" },
        {"MaxIters",  "MaxIter" },
        {"MxaIter",   "MaxIter" },
        {"Max_Iter",  "MaxIter" },
        {"StopTimes", "StopTime"},
        {"Step",      ""        },
        {"Mip",       "Mpi"     },
        {"x",         ""        },
        {"",          ""        },
        {"Unheard",   ""        },
        {"PFreq3",    "PFreq1"  },
    };
    const QStringList names = {"MaxIter", "StopTime", "Mpi", "PFreq1", "PFreq2", "Width"};
    for (const auto& [word, nearest] : rows)
        EXPECT_EQ(nearestName(word, names), nearest) << word;
    EXPECT_EQ(nearestName(QString(100'000, 'x'), names), "");
}

} // namespace
} // namespace Nereo::Inspection
