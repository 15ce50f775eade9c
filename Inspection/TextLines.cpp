#include "TextLines.h"

#include <algorithm>

namespace Nereo::Inspection {

namespace {

int markLength(const QByteArray& bytes, const FileEncoding& encoding)
{
    const QByteArray mark = encoding.encoded(QString(QChar(QChar::ByteOrderMark)));
    return bytes.startsWith(mark) ? mark.size() : 0;
}

bool isSpace(QChar character)
{
    return character.isSpace();
}

} // namespace

TextLines::TextLines(const EditedFile& file) : bytes_(file.bytes()), encoding_(file.encoding())
{
    const QByteArray lineFeed = encoding_.encoded(QStringLiteral("\n"));
    const QByteArray carriageReturn = encoding_.encoded(QStringLiteral("\r"));
    const int unit = lineFeed.size();
    begin_ = markLength(bytes_, encoding_);
    qint64 at = begin_;
    const auto isAt = [&](qint64 offset, const QByteArray& character) {
        return std::equal(character.begin(), character.end(), bytes_.constData() + offset);
    };
    for (qint64 begin = begin_; at + unit <= bytes_.size(); at += unit) {
        if (!isAt(at, lineFeed))
            continue;
        const bool hasReturn = at - unit >= begin && isAt(at - unit, carriageReturn);
        lines_.push_back({begin, at - (hasReturn ? unit : 0), at + unit});
        begin = at + unit;
    }
    const qint64 begin = lines_.empty() ? begin_ : lines_.back().behind;
    if (begin < bytes_.size())
        lines_.push_back({begin, bytes_.size(), bytes_.size()});
}

QString TextLines::text(int i) const
{
    const Line& line = lines_[std::size_t(i)];
    return encoding_.decoded(bytes_.mid(int(line.begin), int(line.end - line.begin)))
        .remove(QLatin1Char('\r'));
}

QString TextLines::firstWord(int i) const
{
    const QString line = text(i);
    const auto begin = std::find_if_not(line.begin(), line.end(), isSpace);
    const auto end = std::find_if(begin, line.end(), isSpace);
    return line.mid(int(begin - line.begin()), int(end - begin));
}

bool TextLines::isBlank(int i) const
{
    const QString line = text(i);
    return std::all_of(line.begin(), line.end(), isSpace);
}

int TextLines::lineOf(qint64 offset) const
{
    const auto behind = std::upper_bound(lines_.begin(), lines_.end(), offset,
                                         [](qint64 place, const Line& line) { return place < line.begin; });
    return int(behind - lines_.begin()) - 1;
}

int TextLines::lastFilled(int first, int behind) const
{
    int last = behind - 1;
    while (last >= first && isBlank(last))
        --last;
    return last;
}

Replacement TextLines::linesBehind(int i, const QStringList& texts, int likeLine) const
{
    QString indentation;
    if (likeLine != noLine) {
        const QString line = text(likeLine);
        indentation = line.left(int(std::find_if_not(line.begin(), line.end(), isSpace) - line.begin()));
    }
    const QByteArray lineEnd = lineEndNear(i);
    const bool isOpen = i >= 0 && lineEndAt(i).isEmpty();
    QByteArray bytes;
    for (const QString& text : texts) {
        const QByteArray line = encodedText(encoding_, indentation + text);
        bytes += isOpen ? lineEnd + line : line + lineEnd;
    }
    const qint64 place = i < 0 ? begin_ : lines_[std::size_t(i)].behind;
    return {place, place, bytes};
}

Replacement TextLines::part(int i, int begin, const QString& before, const QString& after) const
{
    const qint64 line = lines_[std::size_t(i)].begin;
    const QByteArray start = encoding_.encoded(text(i).left(begin));
    const QByteArray part = encoding_.encoded(before);
    if (bytes_.mid(int(line), start.size() + part.size()) != start + part)
        throw Refusal(EditProblem::Doubtful,
                      QStringLiteral("there are bytes before it that are no characters"));
    return {line + start.size(), line + start.size() + part.size(), encoding_.encoded(after)};
}

Replacement TextLines::word(const Item& item, const NewText& text, bool isBehindName) const
{
    QByteArray bytes = encodedText(encoding_, text.text);
    const qint64 begin = item.place.offset;
    const qint64 unit = encoding_.unitSize();
    if (isBehindName && item.length == 0 && !bytes.isEmpty() && begin >= unit) {
        const QString before = encoding_.decoded(bytes_.mid(int(begin - unit), int(unit)));
        if (before.isEmpty() || !before.back().isSpace())
            bytes.prepend(encoding_.encoded(QStringLiteral(" ")));
    }
    return {begin, begin + item.length, bytes};
}

QByteArray TextLines::lineEndAt(int i) const
{
    const Line& line = lines_[std::size_t(i)];
    return bytes_.mid(int(line.end), int(line.behind - line.end));
}

/// How the line ends, or where it doesn't the one before.
QByteArray TextLines::lineEndNear(int i) const
{
    for (int near = std::max(i, 0); near >= 0 && near < count(); --near) {
        QByteArray lineEnd = lineEndAt(near);
        if (!lineEnd.isEmpty())
            return lineEnd;
    }
    return encoding_.encoded(QStringLiteral("\n"));
}

QByteArray encodedText(const FileEncoding& encoding, const QString& text)
{
    if (!encoding.canCarry(text))
        throw Refusal(EditProblem::CannotCarry,
                      QStringLiteral("the encoding of the file has no characters for the text"));
    return encoding.encoded(text);
}

} // namespace Nereo::Inspection
