#pragma once

#include "EditedFile.h"

#include <memory>
#include <vector>

namespace Nereo::Inspection {

/// A value that a file gets and lacked.
struct AddedValue {
    QString address;
    NewText text;
};

struct Addition {
    Replacements replacements;
    std::vector<AddedValue> values;
};

struct Removal {
    Replacements replacements;
    QStringList addresses; ///< of the values that go, all that have it
};

/// How the values of a file are edited. What can't be done is refused.
class KindEditor {
public:
    virtual ~KindEditor();

    /// What is written for a text that a value is given.
    virtual NewText newTextOf(const Item& item, const QString& given) const = 0;

    virtual Replacements replace(const Item& item, const NewText& text) const = 0;
    virtual Addition add(const QString& address, const QString& given) const = 0;
    virtual Removal remove(const Item& item) const = 0;

    /// Addresses that files of the kind may have, and that may be added.
    virtual QStringList addableAddresses() const { return {}; }
};

bool isEditable(FileKind kind);

/// That for a file of a kind which can be edited. It refuses a file whose bytes can't be told apart.
std::unique_ptr<KindEditor> editorFor(const EditedFile& file);

// Each stands in a source of its own, named after the kind.
std::unique_ptr<KindEditor> configurationTextEditor(const EditedFile& file);
std::unique_ptr<KindEditor> configurationXmlEditor(const EditedFile& file);
std::unique_ptr<KindEditor> controlFileEditor(const EditedFile& file);
std::unique_ptr<KindEditor> materialDatabaseEditor(const EditedFile& file);

// What they refuse.
[[noreturn]] void refuseUnknown(const QString& address);
[[noreturn]] void refuseMissing(const QString& address);
[[noreturn]] void refuseRemoval(const QString& address);
[[noreturn]] void refuseDoubt();
[[noreturn]] void refuseText(const QString& text, const QString& why);

} // namespace Nereo::Inspection
