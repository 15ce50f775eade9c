#include "XmlFile.h"

#include "FileEncoding.h"

#include <FileIO/XmlTokens.h>

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace Nereo::Inspection {

namespace {

constexpr int longestNumber = 4096;

bool isOfNumber(QChar character)
{
    static constexpr char others[] = {'+', '-', '.', 'e', 'E'};
    return character.isSpace() || (character >= QLatin1Char('0') && character <= QLatin1Char('9'))
        || std::find(std::begin(others), std::end(others), character) != std::end(others);
}

/// Whether a long piece of a text makes it no number, however it goes on.
bool isNoNumber(const QStringRef& piece)
{
    return piece.size() > longestNumber
        && !std::all_of(piece.begin(), piece.begin() + longestNumber, isOfNumber);
}

/// The places of a document in the encoding that the reader takes it for; none if its characters can't be
/// told apart by looking.
std::unique_ptr<TextPlaces> placesOf(const InputFile& file, const QString& declared)
{
    const FileEncoding encoding = FileEncoding::ofDocument(file, declared);
    if (!encoding.isKnown())
        return nullptr;
    return encoding.kind() == TextPlaces::Encoding::SingleByte
        ? std::make_unique<TextPlaces>(file, encoding.codec())
        : std::make_unique<TextPlaces>(file, encoding.kind());
}

/// What the reader says of bytes that are no characters.
QString encodingError()
{
    return QCoreApplication::translate("QXmlStream", "Encountered incorrectly encoded content.");
}

bool isXmlBlank(QChar character)
{
    return character == QLatin1Char(' ') || character == QLatin1Char('\n') || character == QLatin1Char('\t');
}

} // namespace

XmlFile::XmlFile(const InputFile& file, Listener& listener)
    : listener_(listener), hasPlaces_(listener.wantsPlaces()), file_(file),
      device_(file.open(QIODevice::Text)), xml_(device_.get())
{
    Io::configure(xml_);
}

XmlFile::~XmlFile() = default;

bool XmlFile::next()
{
    if (!hasNext_)
        return false;
    if (!hasPlaces_)
        return readNext();
    previousEnd_ = isAt(Token::NoToken) ? 0 : cleanEnd();
    readNext();
    if (isAt(Token::StartDocument))
        encodingName_ = xml_.documentEncoding().toString();
    hasEntities_ = hasEntities_ || isAt(Token::DTD);
    depth_ += isAt(Token::StartElement) - isAt(Token::EndElement);
    begin_ = previousEnd_;
    const bool isTag = isAt(Token::StartElement) || isAt(Token::EndElement);
    const bool hasWidth =
        begin_ < end(); // unlike the end of an element that is one tag, and entities' content
    if (hasWidth || isAt(Token::StartElement))
        isInEntity_ = hasEntities_ && isTag && !isTagInFile();
    return hasNext_;
}

bool XmlFile::readNext()
{
    token_ = xml_.readNext();
    hasNext_ = Io::hasTokens(xml_);
    return hasNext_;
}

/// Whether the tag that the current token is stands in the file rather than in an entity.
bool XmlFile::isTagInFile()
{
    begin_ = skipBlanks(begin_);
    return begin_ < end() && characterAt(begin_) == QLatin1Char('<')
        && characterAt(end() - 1) == QLatin1Char('>');
}

bool XmlFile::nextChild()
{
    while (next()) {
        if (isAt(Token::EndElement))
            return false;
        if (isAt(Token::StartElement))
            return true;
    }
    return false;
}

void XmlFile::skipElement()
{
    for (int depth = 1; depth > 0 && next();) {
        if (isAt(Token::EndElement))
            --depth;
        else if (isAt(Token::StartElement))
            ++depth;
    }
}

XmlText XmlFile::readText(XmlText::Use use, const QString& address)
{
    XmlText text;
    text.begin = end();
    if (hasPlaces_)
        text.readersBegin = readersPlace();
    text.isInEntity = isInEntity_;
    while (next() && !isAt(Token::EndElement)) {
        if (isAt(Token::StartElement)) {
            if (text.isWhole) // once: a missing end tag lets all that follows stand inside of the value
                listener_.finding({Rule::UnexpectedElement, place(), address, name().toString()});
            text.isWhole = false;
            skipElement();
        } else if (isAt(Token::Characters) || isAt(Token::EntityReference)) {
            const QStringRef piece = xml_.text();
            text.hasReturn = text.hasReturn || piece.contains(QLatin1Char('\r'));
            const bool isCut =
                use == XmlText::Use::Nothing || (use == XmlText::Use::Number && isNoNumber(piece));
            const QStringRef kept = isCut ? piece.left(longestNumber) : piece;
            if (text.text.isEmpty()) // as nearly always; shared with the reader, it would cost it its buffer
                text.text = QString(kept.data(), kept.size());
            else
                text.text += kept;
        }
    }
    text.isWhole = text.isWhole && !xml_.hasError();
    if (!hasPlaces_)
        return text;
    text.end = std::max(begin_, text.begin);
    text.readersEnd = readersPlace();
    TextPlaces& places = this->places();
    if (hasExactPlaces_ && !text.isInEntity) {
        places.addPart({text.begin, text.end, address, !text.isWhole});
        places.reportFaults(text.end, listener_);
    }
    return text;
}

Place XmlFile::place()
{
    if (!hasPlaces_)
        return progress();
    places();
    if (hasExactPlaces_ && depth_ == 1)
        begin_ = skipBlanks(begin_); // which are no token before the root
    return placeAt(begin_, isInEntity_);
}

Place XmlFile::attributePlace(const QString& name)
{
    if (!hasPlaces_)
        return progress();
    const std::optional<Range> range = attributeRange(name);
    return range ? placeAt(range->begin, false) : place();
}

QString XmlFile::attributeSpelling(const QString& name)
{
    if (!hasPlaces_)
        return attribute(name);
    const std::optional<Range> range = attributeRange(name);
    return range ? places().text(range->begin, range->end) : attribute(name);
}

qint64 XmlFile::attributeLength(const QString& name)
{
    if (!hasPlaces_)
        return 0;
    const std::optional<Range> range = attributeRange(name);
    return range && hasOffsets_ ? places().length(range->begin, range->end) : 0;
}

Place XmlFile::place(const XmlText& text)
{
    if (!hasPlaces_)
        return progress();
    places();
    return hasExactPlaces_ ? placeAt(text.begin, text.isInEntity) : text.readersBegin;
}

Place XmlFile::endPlace(const XmlText& text)
{
    if (!hasPlaces_)
        return progress();
    places();
    return hasExactPlaces_ ? placeAt(text.end, text.isInEntity) : text.readersEnd;
}

QString XmlFile::spelling(const XmlText& text)
{
    if (!hasPlaces_)
        return text.text;
    TextPlaces& places = this->places();
    return hasExactPlaces_ && !text.isInEntity ? places.text(text.begin, text.end) : text.text;
}

qint64 XmlFile::length(const XmlText& text)
{
    if (!hasPlaces_)
        return 0;
    TextPlaces& places = this->places();
    return hasOffsets_ && !text.isInEntity ? places.length(text.begin, text.end) : 0;
}

Place XmlFile::endOfFile()
{
    if (!hasPlaces_)
        return progress();
    return placeAt(file_.size(), false); // no file has more characters than bytes
}

void XmlFile::reportFaults()
{
    TextPlaces& places = this->places();
    places.reportFaults(listener_);
    Place nul = places.firstNul();
    if (!nul.hasLine())
        return;
    if (!hasOffsets_)
        nul.offset = Place::Absent;
    listener_.finding({Rule::NulInName, nul});
}

void XmlFile::reportEnd()
{
    if (!hasPlaces_) {
        if (InputFile::hasFailed(*device_))
            listener_.finding({Rule::CannotReadXml, progress(), {}, device_->errorString()});
        else if (xml_.hasError())
            listener_.finding({Rule::MalformedXml, progress(), {}, {}, {xml_.errorString()}});
        return;
    }
    TextPlaces& places = this->places();
    const Place lostByte = hasExactPlaces_ ? Place() : FileEncoding::lostByteOfDocument(file_);
    if (!xml_.hasError()) {
        if (hasExactPlaces_)
            reportFaults();
        else if (lostByte.hasLine())
            listener_.finding({Rule::LostByte, lostByte});
        return;
    }
    if (InputFile::hasFailed(*device_))
        return listener_.finding({Rule::CannotReadXml, placeAt(end(), false), {}, device_->errorString()});

    QString words = xml_.errorString();
    Place place = placeAt(end(), false);
    if (hasExactPlaces_) {
        if (previousEnd_ == 0) // in the declaration, a bad byte is what the reader stops at
            places.addPart({0, end(), {}, true});
        places.reportFaults(end(), listener_);
        // The reader stops at the block in which a byte is bad, before it has read any of it.
        const Place bad = words == encodingError() ? places.firstBadByte() : Place();
        if (bad.hasLine())
            place = {bad.line, bad.column, hasOffsets_ ? bad.offset : Place::Absent};
    }
    if (words.endsWith(QLatin1Char('.')))
        words.chop(1);
    Discovery malformed {Rule::MalformedXml, place, {}, {}, {words}};
    if (lostByte.hasLine()) {
        malformed.consequence =
            QCoreApplication::translate("Nereo::Inspection",
                                        "a load leaves out bytes 0D of characters, the first in line %1")
                .arg(lostByte.line);
    }
    listener_.finding(malformed);
}

TextPlaces& XmlFile::places()
{
    if (places_ == nullptr) {
        places_ = placesOf(file_, encodingName_);
        hasExactPlaces_ = places_ != nullptr;
        if (!hasExactPlaces_)
            places_ = std::make_unique<TextPlaces>(file_); // of which nothing is asked
        hasOffsets_ = hasExactPlaces_
            && (places_->encoding() == TextPlaces::Encoding::Utf8 || listener_.wantsEveryOffset());
    }
    return *places_;
}

/// The end of the current token, which the reader has passed where it had to see the next tag.
qint64 XmlFile::cleanEnd()
{
    if (isAt(Token::StartDocument) && xml_.documentVersion().isEmpty())
        return 0; // there is no declaration
    if (!isAt(Token::Characters) || xml_.isCDATA())
        return end();
    const bool hasSeenTag = !hasEntities_ || characterAt(end() - 1) == QLatin1Char('<');
    return end() - hasSeenTag;
}

qint64 XmlFile::skipBlanks(qint64 index)
{
    constexpr int atOnce = 256;
    if (!isXmlBlank(characterAt(index))) // as nearly always
        return index;
    for (;;) {
        const QString text = places().text(index, index + atOnce);
        const auto end = std::find_if_not(text.begin(), text.end(), isXmlBlank);
        index += end - text.begin();
        if (end != text.end() || text.isEmpty())
            return index;
    }
}

QChar XmlFile::characterAt(qint64 index)
{
    const QString text = places().text(index, index + 1);
    return text.isEmpty() ? QChar() : text[0];
}

Place XmlFile::placeAt(qint64 index, bool isInEntity)
{
    TextPlaces& places = this->places(); // which finds out whether there are any
    if (!hasExactPlaces_)
        return readersPlace();
    Place place = places.place(index);
    if (!hasOffsets_ || isInEntity)
        place.offset = Place::Absent;
    return place;
}

/// Where the reader is, by its own account.
Place XmlFile::readersPlace() const
{
    return {xml_.lineNumber(), xml_.columnNumber() + 1, Place::Absent};
}

/// How far the reader is.
Place XmlFile::progress() const
{
    Place place;
    place.offset = end();
    return place;
}

/// Where the value of an attribute stands; none where it comes out of an entity or a declaration.
std::optional<XmlFile::Range> XmlFile::attributeRange(const QString& name)
{
    place();
    if (!hasExactPlaces_ || isInEntity_)
        return {};
    const QString tag = places().text(begin_, end());
    int at = 0;
    const auto skipTo = [&](auto isEnd) {
        at = int(std::find_if(tag.begin() + at, tag.end(), isEnd) - tag.begin());
    };
    const auto isEndOfName = [](QChar c) {
        return isXmlBlank(c) || c == QLatin1Char('=') || c == QLatin1Char('>');
    };
    skipTo(isEndOfName); // that of the element
    while (at < tag.size()) {
        skipTo([](QChar c) { return !isXmlBlank(c); });
        const int nameBegin = at;
        skipTo(isEndOfName);
        const QStringRef found = tag.midRef(nameBegin, at - nameBegin);
        skipTo([](QChar c) { return c == QLatin1Char('"') || c == QLatin1Char('\''); });
        const QChar quote = at < tag.size() ? tag[at] : QChar();
        const int valueBegin = ++at;
        skipTo([quote](QChar c) { return c == quote; });
        if (found == name && at < tag.size())
            return Range {begin_ + valueBegin, begin_ + at};
        ++at;
    }
    return {};
}

} // namespace Nereo::Inspection
