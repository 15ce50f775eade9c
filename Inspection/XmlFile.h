#pragma once

#include "InputFile.h"
#include "Listener.h"
#include "TextPlaces.h"

#include <QXmlStreamReader>

#include <memory>
#include <optional>

namespace Nereo::Inspection {

/// A text between a start tag and its end tag.
struct XmlText {
    enum class Use {
        Nothing, ///< only a beginning is kept
        Number,  ///< kept, but for what makes it so long that it can be no number
        Value    ///< kept as it is
    };

    QString text;       ///< as QXmlStreamReader::readElementText() gives it
    qint64 begin = 0;   ///< the number of what follows the start tag
    qint64 end = 0;     ///< and of the end tag
    Place readersBegin; ///< as far as the reader knows it, where nobody knows better
    Place readersEnd;
    bool isInEntity = false; ///< the element comes out of one
    bool hasReturn = false;  ///< a carriage return, which only a reference can give
    bool isWhole = true;     ///< no element stands in it and nothing is malformed; there are findings of both
};

/// An XML file as a load reads it, and where its elements, attributes and texts stand.
class NEREOINSPECTION_EXPORT XmlFile {
public:
    XmlFile(const InputFile& file, Listener& listener);
    ~XmlFile();

    /// Goes to the next token. False at the end of the document, and where it is malformed.
    bool next();

    /// Goes to the start of the next child of the element that the last start was of. False at that element's
    /// end.
    bool nextChild();

    /// Goes to the end of the element that the last start was of.
    void skipElement();

    /// Goes to the end of the element that the last start was of and gives the text in it. An element within
    /// is a finding of this address.
    XmlText readText(XmlText::Use use, const QString& address);

    bool isStartElement() const { return isAt(Token::StartElement); }
    bool hasError() const { return xml_.hasError(); }
    QStringRef name() const { return xml_.name(); } ///< of the element, without a prefix

    /// Of the `<` of the current start or end tag; of an element that is one tag its end is behind that.
    Place place();

    /// The value of an attribute of the current start element; empty if there is none.
    QString attribute(const QString& name) const { return xml_.attributes().value(name).toString(); }
    bool hasAttribute(const QString& name) const { return xml_.attributes().hasAttribute(name); }
    Place attributePlace(const QString& name);      ///< of its first character
    QString attributeSpelling(const QString& name); ///< what stands between the quotes
    qint64 attributeLength(const QString& name);    ///< in bytes

    Place place(const XmlText& text);      ///< of what follows the start tag
    Place endPlace(const XmlText& text);   ///< of the end tag
    QString spelling(const XmlText& text); ///< what stands between the tags, markup included
    qint64 length(const XmlText& text);    ///< of that in bytes; 0 where bytes can't be told

    Place endOfFile();

    /// What a load finds malformed, and what can't be read. Comes last.
    void reportEnd();

private:
    using Token = QXmlStreamReader::TokenType;

    struct Range {
        qint64 begin;
        qint64 end;
    };

    bool isAt(Token token) const { return token_ == token; }
    bool readNext();
    TextPlaces& places();
    void reportFaults();
    qint64 end() const { return xml_.characterOffset(); }
    qint64 cleanEnd();
    bool isTagInFile();
    qint64 skipBlanks(qint64 index);
    QChar characterAt(qint64 index);
    Place placeAt(qint64 index, bool isInEntity);
    Place readersPlace() const;
    Place progress() const;
    std::optional<Range> attributeRange(const QString& name);

    Listener& listener_;
    const bool hasPlaces_; ///< somebody wants to know them
    const InputFile& file_;
    std::unique_ptr<QIODevice> device_;
    QXmlStreamReader xml_;
    Token token_ = Token::NoToken;
    bool hasNext_ = true;
    QString encodingName_; ///< in the declaration
    std::unique_ptr<TextPlaces> places_;
    bool hasExactPlaces_ = true; ///< the characters of the encoding can be told apart
    bool hasOffsets_ = true;     ///< it is UTF-8
    bool hasEntities_ = false;   ///< the document declares some, so that tokens may come out of them
    bool isInEntity_ = false;    ///< the current token does
    int depth_ = 0;              ///< of the current element; that of the root is 1
    qint64 begin_ = 0;           ///< of the current token
    qint64 previousEnd_ = 0;     ///< of the token before
};

} // namespace Nereo::Inspection
