#pragma once

#include "EditedFile.h"

#include <vector>

namespace Nereo::Inspection {

/// An element as its tags stand in a document, by the numbers of characters.
struct XmlElement {
    static constexpr int None = -1;

    QString name;     ///< with its prefix
    int parent;       ///< its number; None at the top
    int begin;        ///< of the start tag
    int contentBegin; ///< what follows it
    int contentEnd;   ///< the end tag
    int end;          ///< what follows that
    bool isOneTag;    ///< which ends in "/>"

    QStringRef localName() const { return name.midRef(name.indexOf(QLatin1Char(':')) + 1); }
};

/// The tags of a document that is edited. It knows no entities: what comes out of them isn't there.
class XmlMarkup {
public:
    explicit XmlMarkup(const EditedFile& file);

    const QString& text() const { return text_; }
    const std::vector<XmlElement>& elements() const { return elements_; } ///< by their start tags
    const XmlElement& operator[](int element) const { return elements_[std::size_t(element)]; }

    /// Those in an element, in their order.
    std::vector<int> childrenOf(int element) const;

    /// The value of an attribute as it stands there; none if there is none.
    std::optional<QString> attribute(int element, const QString& name) const;

    /// The bytes that stand for the value of an item. Comments in it stay.
    Replacements replacement(const Item& item, const NewText& text) const;

    /// An element in another, behind a child of it, or as the first if there is none. It gets a line of its
    /// own where the children have.
    Replacement child(int parent, int behind, const QString& name, const QString& text) const;

    /// Takes an element away, and the line that would be left empty.
    Replacement without(int element) const;

private:
    struct Range {
        int begin;
        int end;
    };

    void read();
    int readTag(int begin, std::vector<int>& open);
    int behindDeclaration(int begin) const;
    int behind(int begin, const char* end) const;

    std::vector<Range> runsIn(Range content) const;
    Replacements newContent(Range content, const QString& text, bool isNumber) const;
    QString escaped(const QString& text, bool isAttribute) const;
    const XmlElement& whole(int element) const;
    QString indentationOf(int element) const;
    bool beginsLine(int element) const;
    int lineBegin(int at) const;
    int endOfLineBehind(int at) const;
    QString lineEnd(int at) const;

    int indexOf(qint64 offset) const;
    qint64 offsetOf(int index) const;
    Replacement bytes(Range range, const QString& text) const;

    FileEncoding encoding_;
    QByteArray bytes_;
    QString text_;
    std::vector<XmlElement> elements_;
};

} // namespace Nereo::Inspection
