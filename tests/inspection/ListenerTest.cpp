#include <Inspection/Listener.h>

#include <gtest/gtest.h>

namespace Nereo::Inspection {
namespace {

TEST(ListenerTest, HearsOfAValueInAMaterialByItsWholeAddress)
{
    QStringList addresses;
    const ItemVisitor visit = [&addresses](const Item& item) { addresses += item.address; };
    ItemListener listener(visit);
    Item item;
    item.address = QStringLiteral("/id");
    listener.itemIn(QStringLiteral("Water"), item);
    listener.item(item);
    EXPECT_EQ(addresses, QStringList({"Water/id", "/id"}));
}

TEST(ListenerTest, KeepsFindingsAndNoValues)
{
    FindingListener listener;
    EXPECT_FALSE(listener.wantsItems());
    listener.item({});
    EXPECT_TRUE(listener.takeFindings().empty());
    listener.finding({Rule::MissingValue, {}, QStringLiteral("MaxIter")});
    const std::vector<Finding> findings = listener.takeFindings();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].address, "MaxIter");
}

} // namespace
} // namespace Nereo::Inspection
