#include "XmlMarkup.h"

#include "KindEditor.h"

#include <algorithm>

namespace Nereo::Inspection {

namespace {

constexpr int none = -1;
constexpr char commentBegin[] = "<!--";
constexpr char commentEnd[] = "-->";
constexpr char dataBegin[] = "<![CDATA[";
constexpr char dataEnd[] = "]]>";
constexpr char instructionBegin[] = "<?";
constexpr char instructionEnd[] = "?>";

bool isBlank(QChar character)
{
    return character == QLatin1Char(' ') || character == QLatin1Char('\n') || character == QLatin1Char('\t')
        || character == QLatin1Char('\r');
}

bool isQuote(QChar character)
{
    return character == QLatin1Char('"') || character == QLatin1Char('\'');
}

bool isEndOfName(QChar character)
{
    return isBlank(character) || character == QLatin1Char('=') || character == QLatin1Char('>')
        || character == QLatin1Char('/');
}

bool isAt(const QString& text, int at, const char* what)
{
    return text.midRef(at).startsWith(QLatin1String(what));
}

/// What a document may hold, and a load gives back.
bool isOfXml(const QString& text)
{
    for (const uint character : text.toUcs4()) {
        const bool isAllowed = character == '\t' || character == '\n' || character == '\r'
            || (character >= 0x20 && character < 0xD800) || (character >= 0xE000 && character < 0xFFFE)
            || character > 0xFFFF;
        if (!isAllowed)
            return false;
    }
    return !text.startsWith(QChar(QChar::ByteOrderMark));
}

} // namespace

XmlMarkup::XmlMarkup(const EditedFile& file) : encoding_(file.encoding()), bytes_(file.bytes())
{
    if (!encoding_.isKnown())
        refuseDoubt();
    text_ = encoding_.decoded(bytes_);
    read();
}

std::vector<int> XmlMarkup::childrenOf(int element) const
{
    std::vector<int> children;
    for (int i = element + 1; i < int(elements_.size()); ++i) {
        if (elements_[std::size_t(i)].parent == element)
            children.push_back(i);
    }
    return children;
}

std::optional<QString> XmlMarkup::attribute(int element, const QString& name) const
{
    const XmlElement& tag = elements_[std::size_t(element)];
    for (int at = tag.begin + 1 + tag.name.size();; ++at) {
        while (isBlank(text_[at]))
            ++at;
        const int nameBegin = at;
        while (!isEndOfName(text_[at]))
            ++at;
        const QStringRef found = text_.midRef(nameBegin, at - nameBegin);
        while (!isQuote(text_[at]) && text_[at] != QLatin1Char('>'))
            ++at;
        if (!isQuote(text_[at]))
            return {};
        const int valueBegin = at + 1;
        at = text_.indexOf(text_[at], valueBegin);
        if (found == name)
            return text_.mid(valueBegin, at - valueBegin);
    }
}

Replacements XmlMarkup::replacement(const Item& item, const NewText& text) const
{
    if (!item.place.hasOffset())
        refuseDoubt(); // it comes out of an entity
    if (item.type == Item::Type::Text && !isOfXml(text.text))
        refuseText(text.text,
                   QStringLiteral("has a character that XML doesn't allow, or begins with a "
                                  "byte-order mark, which a load doesn't keep"));
    const Range range {indexOf(item.place.offset), indexOf(item.place.offset + item.length)};
    if (isQuote(text_[range.begin - 1]))
        return {bytes(range, escaped(text.text, true))};
    const auto element = std::lower_bound(
        elements_.begin(), elements_.end(), range.begin,
        [](const XmlElement& one, int contentBegin) { return one.contentBegin < contentBegin; });
    if (element == elements_.end() || element->contentBegin != range.begin)
        refuseDoubt();
    if (element->isOneTag) {
        const Range slash {range.begin - 2, range.begin};
        return {bytes(slash,
                      QLatin1Char('>') + escaped(text.text, false) + QLatin1String("</") + element->name
                          + QLatin1Char('>'))};
    }
    if (element->contentEnd != range.end)
        refuseDoubt();
    const bool isNumber = item.type == Item::Type::Integer || item.type == Item::Type::Number;
    return newContent(range, escaped(text.text, false), isNumber);
}

Replacement XmlMarkup::child(int parent, int behind, const QString& name, const QString& text) const
{
    if (!isOfXml(text))
        refuseText(text, QStringLiteral("has a character that XML doesn't allow"));
    const XmlElement& outer = whole(parent);
    const QString element = QLatin1Char('<') + name + QLatin1Char('>') + escaped(text, false)
        + QLatin1String("</") + name + QLatin1Char('>');
    const std::vector<int> children = childrenOf(parent);
    const int neighbour = behind != none ? behind : children.empty() ? none : children.front();
    const int at = behind != none ? whole(behind).end : outer.contentBegin;

    if (neighbour != none) {
        const int lineEndAt = endOfLineBehind(at);
        if (!beginsLine(neighbour) || lineEndAt == none)
            return bytes({at, at}, element);
        return bytes({lineEndAt, lineEndAt}, lineEnd(lineEndAt) + indentationOf(neighbour) + element);
    }

    constexpr int step = 4; // a writer's
    const bool hasLines = text_.contains(QLatin1Char('\n'));
    const QString outerIndentation = indentationOf(parent);
    const QString line =
        hasLines ? lineEnd(at) + outerIndentation + QString(step, QLatin1Char(' ')) + element : element;
    const QString closing = hasLines ? lineEnd(at) + outerIndentation : QString();
    if (outer.isOneTag) {
        int slash = outer.contentBegin - 2;
        while (isBlank(text_[slash - 1]))
            --slash;
        return bytes({slash, outer.contentBegin},
                     QLatin1Char('>') + line + closing + QLatin1String("</") + outer.name + QLatin1Char('>'));
    }
    const int lineEndAt = endOfLineBehind(at);
    if (lineEndAt != none)
        return bytes({lineEndAt, lineEndAt}, line);
    return bytes({at, at}, at == outer.contentEnd ? line + closing : line);
}

Replacement XmlMarkup::without(int element) const
{
    Range range {whole(element).begin, whole(element).end};
    int lineEndAt = range.end;
    while (lineEndAt < text_.size() && isBlank(text_[lineEndAt]) && text_[lineEndAt] != QLatin1Char('\n'))
        ++lineEndAt;
    const bool endsLine = lineEndAt < text_.size() && text_[lineEndAt] == QLatin1Char('\n');
    if (beginsLine(element) && endsLine)
        range = {lineBegin(range.begin), lineEndAt + 1};
    return bytes(range, {});
}

/// Reads up to the end, or to what no well-formed document has.
void XmlMarkup::read()
{
    std::vector<int> open;
    for (int at = text_.indexOf(QLatin1Char('<')); at != none; at = text_.indexOf(QLatin1Char('<'), at)) {
        if (isAt(text_, at, commentBegin))
            at = behind(at + int(sizeof commentBegin) - 1, commentEnd);
        else if (isAt(text_, at, dataBegin))
            at = behind(at, dataEnd);
        else if (isAt(text_, at, instructionBegin))
            at = behind(at, instructionEnd);
        else if (isAt(text_, at, "<!"))
            at = behindDeclaration(at);
        else
            at = readTag(at, open);
        if (at == none)
            return;
    }
}

int XmlMarkup::readTag(int begin, std::vector<int>& open)
{
    int end = begin + 1;
    for (QChar quote; end < text_.size() && (!quote.isNull() || text_[end] != QLatin1Char('>')); ++end) {
        const QChar character = text_[end];
        if (character == quote)
            quote = QChar();
        else if (quote.isNull() && isQuote(character))
            quote = character;
    }
    if (end == text_.size())
        return none;
    ++end;
    if (text_[begin + 1] == QLatin1Char('/')) {
        if (open.empty())
            return none;
        XmlElement& element = elements_[std::size_t(open.back())];
        open.pop_back();
        element.contentEnd = begin;
        element.end = end;
        return end;
    }
    const auto nameEnd = std::find_if(text_.begin() + begin, text_.end(), isEndOfName);
    const QString name = text_.mid(begin + 1, int(nameEnd - text_.begin()) - begin - 1);
    const bool isOneTag = text_[end - 2] == QLatin1Char('/');
    const int parent = open.empty() ? XmlElement::None : open.back();
    elements_.push_back({name, parent, begin, end, isOneTag ? end : none, isOneTag ? end : none, isOneTag});
    if (!isOneTag)
        open.push_back(int(elements_.size()) - 1);
    return end;
}

/// The document type, with what it declares.
int XmlMarkup::behindDeclaration(int begin) const
{
    int depth = 0;
    for (int at = begin + 1; at < text_.size(); ++at) {
        const QChar character = text_[at];
        if (isQuote(character)) {
            at = text_.indexOf(character, at + 1);
            if (at == none)
                return none;
        } else if (isAt(text_, at, commentBegin)) {
            at = behind(at + int(sizeof commentBegin) - 1, commentEnd) - 1;
            if (at < begin)
                return none;
        } else if (character == QLatin1Char('<') || character == QLatin1Char('[')) {
            ++depth;
        } else if (depth == 0 && character == QLatin1Char('>')) {
            return at + 1;
        } else if (character == QLatin1Char('>') || character == QLatin1Char(']')) {
            --depth;
        }
    }
    return none;
}

int XmlMarkup::behind(int begin, const char* end) const
{
    const int at = text_.indexOf(QLatin1String(end), begin);
    return at == none ? none : at + int(qstrlen(end));
}

/// What makes up the text in an element: all but comments and instructions, a CDATA section by itself.
std::vector<XmlMarkup::Range> XmlMarkup::runsIn(Range content) const
{
    std::vector<Range> runs;
    for (int at = content.begin; at < content.end;) {
        int end;
        if (isAt(text_, at, commentBegin)) {
            end = behind(at + int(sizeof commentBegin) - 1, commentEnd);
        } else if (isAt(text_, at, instructionBegin)) {
            end = behind(at, instructionEnd);
        } else {
            end = isAt(text_, at, dataBegin) ? behind(at, dataEnd) : text_.indexOf(QLatin1Char('<'), at);
            if (end == at)
                refuseDoubt(); // an element stands in the text
            runs.push_back({at, end});
        }
        at = end;
    }
    return runs;
}

Replacements XmlMarkup::newContent(Range content, const QString& text, bool isNumber) const
{
    std::vector<Range> runs = runsIn(content);
    if (isNumber) { // around which blanks don't matter
        for (Range& run : runs) {
            while (run.begin < run.end && isBlank(text_[run.begin]))
                ++run.begin;
            while (run.end > run.begin && isBlank(text_[run.end - 1]))
                --run.end;
        }
        runs.erase(std::remove_if(runs.begin(), runs.end(), [](Range run) { return run.begin == run.end; }),
                   runs.end());
    }
    if (runs.empty())
        return {bytes({content.begin, content.begin}, text)};
    Replacements replacements {bytes(runs.front(), text)};
    for (std::size_t i = 1; i < runs.size(); ++i)
        replacements.push_back(bytes(runs[i], {}));
    return replacements;
}

/// As a writer escapes it, and what the encoding hasn't got by its number.
QString XmlMarkup::escaped(const QString& text, bool isAttribute) const
{
    struct Escape {
        char character;
        const char* text;
    };
    static constexpr Escape escapes[] = {
        {'<',  "&lt;"  },
        {'>',  "&gt;"  },
        {'&',  "&amp;" },
        {'"',  "&quot;"},
        {'\'', "&apos;"}
    };
    QString result;
    for (int i = 0; i < text.size(); ++i) {
        const int size = text[i].isHighSurrogate() ? 2 : 1;
        const QString character = text.mid(i, size);
        const auto escape = std::find_if(std::begin(escapes), std::end(escapes), [&](const Escape& one) {
            return character == QLatin1Char(one.character) && (isAttribute || one.character != '\'');
        });
        const bool isLostBlank = text[i] == QLatin1Char('\r')
            || (isAttribute && (text[i] == QLatin1Char('\n') || text[i] == QLatin1Char('\t')));
        // A load takes the bytes of carriage returns out before it decodes any.
        const bool isCarried = encoding_.canCarry(character) && !encoding_.encoded(character).contains('\r');
        if (escape != std::end(escapes))
            result += QLatin1String(escape->text);
        else if (isLostBlank || !isCarried)
            result += QStringLiteral("&#%1;").arg(character.toUcs4().value(0));
        else
            result += character;
        i += size - 1;
    }
    return result;
}

/// An element that ends; the document may not.
const XmlElement& XmlMarkup::whole(int element) const
{
    const XmlElement& found = elements_[std::size_t(element)];
    if (found.end == none)
        refuseDoubt();
    return found;
}

QString XmlMarkup::indentationOf(int element) const
{
    const int begin = lineBegin(elements_[std::size_t(element)].begin);
    int end = begin;
    while (isBlank(text_[end]))
        ++end;
    return text_.mid(begin, end - begin);
}

bool XmlMarkup::beginsLine(int element) const
{
    const int begin = elements_[std::size_t(element)].begin;
    return std::all_of(text_.begin() + lineBegin(begin), text_.begin() + begin, isBlank);
}

int XmlMarkup::lineBegin(int at) const
{
    return at == 0 ? 0 : text_.lastIndexOf(QLatin1Char('\n'), at - 1) + 1;
}

/// The end of the line in an element, if only blanks and comments stand before it; none otherwise.
int XmlMarkup::endOfLineBehind(int at) const
{
    for (;;) { // up to a tag, for the element ends
        if (isAt(text_, at, commentBegin)) {
            const int end = behind(at + int(sizeof commentBegin) - 1, commentEnd);
            if (text_.midRef(at, end - at).contains(QLatin1Char('\n')))
                return none;
            at = end;
        } else if (isAt(text_, at, "\n") || isAt(text_, at, "\r\n")) {
            return at;
        } else if (isBlank(text_[at])) {
            ++at;
        } else {
            return none;
        }
    }
}

/// How the line ends, or where it doesn't the one before.
QString XmlMarkup::lineEnd(int at) const
{
    int lineFeed = text_.indexOf(QLatin1Char('\n'), at);
    if (lineFeed == none)
        lineFeed = text_.lastIndexOf(QLatin1Char('\n'), at - 1); // none from the end of the text
    return lineFeed > 0 && text_[lineFeed - 1] == QLatin1Char('\r') ? QStringLiteral("\r\n")
                                                                    : QStringLiteral("\n");
}

int XmlMarkup::indexOf(qint64 offset) const
{
    return encoding_.decoded(bytes_.left(int(offset))).size();
}

qint64 XmlMarkup::offsetOf(int index) const
{
    const QByteArray before = encoding_.encoded(text_.left(index));
    if (!bytes_.startsWith(before))
        refuseDoubt(); // bytes that are no characters stand before it
    return before.size();
}

Replacement XmlMarkup::bytes(Range range, const QString& text) const
{
    return {offsetOf(range.begin), offsetOf(range.end), encoding_.encoded(text)};
}

} // namespace Nereo::Inspection
