#include "TextBlock.h"

#include "NumberText.h"

#include <QLatin1Char>
#include <QStringView>

#include <algorithm>

namespace Nereo::Io {
namespace {

constexpr int blockSize = 16 * 1024;

} // namespace

TextBlock::TextBlock(QTextStream& out) : out_(out), block_(blockSize), end_(block_.data()) {}

TextBlock& TextBlock::operator<<(char character)
{
    makeRoom(1);
    *end_++ = QLatin1Char(character);
    return *this;
}

TextBlock& TextBlock::operator<<(int number)
{
    return appendNumber(number);
}

TextBlock& TextBlock::operator<<(double number)
{
    return appendNumber(number);
}

TextBlock& TextBlock::operator<<(const QString& text)
{
    if (text.size() > blockSize) {
        flush();
        out_ << text;
        return *this;
    }
    makeRoom(text.size());
    end_ = std::copy(text.begin(), text.end(), end_);
    return *this;
}

void TextBlock::flush()
{
    out_ << QStringView(block_.data(), end_);
    end_ = block_.data();
}

template <class Number>
TextBlock& TextBlock::appendNumber(Number number)
{
    makeRoom(longestNumber);
    char text[longestNumber];
    end_ = std::transform(text, writeNumber(text, number), end_,
                          [](char character) { return QLatin1Char(character); });
    return *this;
}

void TextBlock::makeRoom(int count)
{
    if (block_.data() + blockSize - end_ < count)
        flush();
}

} // namespace Nereo::Io
