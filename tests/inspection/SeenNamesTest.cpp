#include <Inspection/SeenNames.h>

#include <gtest/gtest.h>

#include <QString>

namespace Nereo::Inspection {
namespace {

TEST(SeenNamesTest, CountsHowOftenANameCameBefore)
{
    SeenNames names;
    EXPECT_EQ(names.add(u"a"), 0);
    EXPECT_EQ(names.add(u"A"), 0);
    EXPECT_EQ(names.add(u""), 0);
    EXPECT_EQ(names.add(u"a"), 1);
    EXPECT_EQ(names.add(u"a"), 2);
    EXPECT_EQ(names.add(u""), 1);
}

TEST(SeenNamesTest, KeepsManyNamesApart)
{
    constexpr int count = 200000;
    SeenNames names;
    for (int i = 0; i < count; ++i)
        ASSERT_EQ(names.add(QString::number(i)), 0) << i;
    for (int i = 0; i < count; ++i)
        ASSERT_EQ(names.add(QString::number(i)), 1) << i;
}

TEST(SeenNamesTest, CountsNoFurtherThanItIsTold)
{
    SeenNames names(1);
    for (const char16_t* name : {u"a", u"b"})
        EXPECT_EQ(names.add(name), 0);
    EXPECT_EQ(names.add(u"a"), 1);
    EXPECT_EQ(names.add(u"b"), 1);
    EXPECT_EQ(names.add(u"a"), 2);
    EXPECT_EQ(names.add(u"b"), 1);
}

} // namespace
} // namespace Nereo::Inspection
