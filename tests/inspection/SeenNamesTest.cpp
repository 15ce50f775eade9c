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

TEST(NameCountTest, CountsEachNameOnce)
{
    NameCount names;
    EXPECT_EQ(names.count(), 0);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 50'000; ++i)
            names.add(QStringLiteral("name/%1").arg(i));
        EXPECT_EQ(names.count(), 50'000);
    }
    names.add(QString());
    names.add(QStringLiteral("another"));
    EXPECT_EQ(names.count(), 50'002);
    EXPECT_EQ(names.count(), 50'002);
}

} // namespace
} // namespace Nereo::Inspection
