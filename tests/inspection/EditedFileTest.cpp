#include <Inspection/EditedFile.h>

#include <gtest/gtest.h>

namespace Nereo::Inspection {
namespace {

TEST(EditedFileTest, PutsBytesInTheirPlaces)
{
    const QByteArray bytes = "abcdef";
    EXPECT_EQ(replaced(bytes, {}), "abcdef");
    EXPECT_EQ(replaced(bytes,
                       {
                           {4, 5, "5"},
                           {0, 2, "1"}
    }),
              "1cd5f"); // in any order
    EXPECT_EQ(replaced(bytes,
                       {
                           {2, 2, "1"},
                           {2, 2, "2"},
                           {2, 3, "" }
    }),
              "ab12def");
    EXPECT_EQ(replaced(bytes,
                       {
                           {6, 6, "g"}
    }),
              "abcdefg");
}

TEST(EditedFileTest, RefusesPlacesThatOverlapOrAreNotThere)
{
    const Replacements refused[] = {
        {{0, 3, "1"}, {2, 4, "2"}},
        {{-1, 0, "1"}          },
        {{3, 2, "1"}},
        {{6, 7, "1"}          },
    };
    for (const Replacements& replacements : refused) {
        try {
            replaced("abcdef", replacements);
            FAIL() << replacements.front().begin;
        } catch (const Refusal& refusal) {
            EXPECT_EQ(refusal.problem(), EditProblem::Doubtful);
            EXPECT_EQ(refusal.message(), "two values stand at one place of the file");
        }
    }
}

} // namespace
} // namespace Nereo::Inspection
