#include "Marked.h"

#include <QTextCodec>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

std::string utf8(const QString& text)
{
    return text.toStdString();
}

std::string utf16(const QString& text)
{
    std::string bytes;
    for (const QChar character : text) {
        bytes += char(character.row());
        bytes += char(character.cell());
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

Marked Marked::inUtf16() const
{
    return encoded("\xFE\xFF", utf16);
}
