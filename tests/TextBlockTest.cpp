#include "FileIO/TextBlock.h"

#include <gtest/gtest.h>

#include <limits>

namespace Nereo::Io {
namespace {

template <class Out>
void writeItems(Out& out, int count)
{
    for (int i = 0; i < count; ++i)
        out << i - count / 2 << ' ' << i * 1e-3 << ' ' << QString(i % 7, QChar(0x20ac)) << '\n';
}

TEST(TextBlock, WritesWhatTheStreamWouldWrite)
{
    for (const int count : {0, 1, 10, 100, 5000}) {
        QString expected;
        QTextStream direct(&expected);
        writeItems(direct, count);

        QString written;
        QTextStream out(&written);
        TextBlock block(out);
        writeItems(block, count);
        block.flush();
        EXPECT_EQ(written, expected) << count;
    }
}

TEST(TextBlock, WritesNumbersAtTheEdges)
{
    QString written;
    QTextStream out(&written);
    TextBlock block(out);
    block << std::numeric_limits<int>::min() << ' ' << -0.0 << ' ' << 275.3125 << ' ' << -1.5e-300;
    block.flush();
    EXPECT_EQ(written, "-2147483648 0 275.313 -1.5e-300");
}

TEST(TextBlock, KeepsTheOrderOfTextsOfAnyLength)
{
    QString expected;
    QString written;
    QTextStream out(&written);
    TextBlock block(out);
    for (const int length : {1, 16 * 1024 - 1, 16 * 1024, 16 * 1024 + 1, 3, 100'000, 0, 2}) {
        const QString text(length, QChar('a' + length % 26));
        block << text << '|';
        expected += text + '|';
    }
    block.flush();
    EXPECT_EQ(written, expected);
}

} // namespace
} // namespace Nereo::Io
