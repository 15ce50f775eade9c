#include <Inspection/NearestName.h>
#include <NereoInspection/Outline.h>

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

TEST(NearestNameTest, FindsTheAddressThatSomebodyMeant)
{
    struct Row {
        const char* address;
        const char* nearest;
    };
    constexpr Row rows[] = {
        {"maxiter",                  "MaxIter"                 },
        {"relaxation/kP/undr",       "relaxation/kP/under"     },
        {"Relaxation/kp/Under",      "relaxation/kP/under"     },
        {"relaxation/kX/under",      "relaxation/kU/under"     }, // the first of those that are as near
        {"relaxatoin/kP/udner",      "relaxation/kP/under"     },
        {"relaxation/kP",            "relaxation/kP/under"     },
        {"kP/under",                 "relaxation/kP/under"     },
        {"KGRAVY",                   "constants/kGravY"        },
        {"flags/clf",                "flags/cfl"               },
        {"flags/abc",                ""                        }, // near are the parts, and not all of it
        {"flags/cfl/1",              ""                        },
        {"Water/densty/value",       "Water/density/value"     },
        {"Water/density",            "Water/density/value"     },
        {"Water/density/point",      ""                        },
        {"points/1/x",               "Water/density/points/1/x"},
        {"Water/density/points/2/x", "Water/density/points/1/x"},
        {"ater/density/value",       "Water/density/value"     },
        {"x",                        "Water/density/points/1/x"},
        {"elaxation",                ""                        },
        {"MaxIter",                  ""                        }, // which is known
        {"",                         ""                        },
        {"/",                        ""                        },
        {"//",                       ""                        },
    };
    const QStringList known = {
        "MaxIter",   "relaxation/kU/under", "relaxation/kP/under",     "constants/kGravY",
        "flags/cfl", "Water/density/value", "Water/density/points/1/x"};
    for (const auto& [address, nearest] : rows)
        EXPECT_EQ(nearestAddress(address, known), nearest) << address;
    EXPECT_EQ(nearestAddress(QString(100'000, 'x'), known), "");
    EXPECT_EQ(nearestAddress(QString(100'000, '/'), known), "");
    EXPECT_EQ(nearestAddress("MaxIter", {}), "");
}

} // namespace
} // namespace Nereo::Inspection
