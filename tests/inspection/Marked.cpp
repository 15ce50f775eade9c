#include "Marked.h"

#include <QVector>

#include <gtest/gtest.h>

namespace {

std::string utf8(const QString& text)
{
    return text.toStdString();
}

/// The bytes of numbers, so many of each.
template <class Numbers>
std::string bytesOf(const Numbers& numbers, int count, Marked::ByteOrder order)
{
    std::string bytes;
    for (const auto number : numbers) {
        for (int i = 0; i < count; ++i)
            bytes += char(number >> 8 * (order == Marked::LittleEndian ? i : count - 1 - i));
    }
    return bytes;
}

/// Letters beyond the first plane are one character each.
qint64 charactersIn(const QString& text)
{
    return text.toUcs4().size();
}

} // namespace

template <class Encode>
Marked Marked::encoded(const std::string& mark, Encode encode) const
{
    Marked marked = *this;
    const std::string before = mark + encode(before_);
    const std::string found = encode(found_);
    marked.bytes_ = before + found + encode(behind_);
    marked.place_.line = 1 + before_.count(QLatin1Char('\n'));
    marked.place_.column = 1 + charactersIn(before_.mid(before_.lastIndexOf(QLatin1Char('\n')) + 1));
    marked.place_.offset = qint64(before.size());
    marked.length_ = qint64(found.size());
    return marked;
}

Marked::Marked(const std::string& text)
{
    const QString whole = QString::fromStdString(text);
    const int begin = whole.indexOf("[[");
    const int end = whole.indexOf("]]", begin);
    EXPECT_TRUE(begin >= 0 && end >= 0) << "no mark in: " << text;
    before_ = whole.left(begin);
    found_ = whole.mid(begin + 2, end - begin - 2);
    behind_ = whole.mid(end + 2);
    *this = encoded({}, utf8);
}

Marked Marked::withCarriageReturns() const
{
    Marked marked = *this;
    for (QString* part : {&marked.before_, &marked.found_, &marked.behind_})
        part->replace(QLatin1String("\n"), QLatin1String("\r\n"));
    return marked.encoded({}, utf8);
}

Marked Marked::withByteOrderMark() const
{
    return encoded("\xEF\xBB\xBF", utf8);
}

Marked Marked::inUtf16(ByteOrder order) const
{
    return encoded(bytesOf(std::u16string(u"\uFEFF"), 2, order),
                   [order](const QString& text) { return bytesOf(text.toStdU16String(), 2, order); });
}

Marked Marked::inUtf32(ByteOrder order) const
{
    return encoded(bytesOf(std::u32string(U"\uFEFF"), 4, order),
                   [order](const QString& text) { return bytesOf(text.toUcs4(), 4, order); });
}

Marked Marked::inLatin1() const
{
    return encoded({}, [](const QString& text) { return text.toLatin1().toStdString(); });
}

Marked Marked::behindEmSpace() const
{
    Marked marked = *this;
    marked.before_.insert(marked.before_.lastIndexOf(QLatin1Char('\n')) + 1, QChar(0x2003));
    return marked.encoded({}, utf8);
}

Marked Marked::withoutOffset() const
{
    Marked marked = *this;
    marked.place_.offset = Nereo::Inspection::Place::Absent;
    return marked;
}
