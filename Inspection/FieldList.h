#pragma once

#include "InputFile.h"

#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoInspection/Export.h>

#include <QHash>
#include <QString>

#include <vector>

namespace Nereo::Inspection {

/// A field that a results file has, known or not.
struct ListedField {
    QString address;
    int code;   ///< of the field that a load stores; kNone of what it ignores
    int column; ///< in the records

    /// What names the same in another file: a load knows a field by its code, and ignores it by its name.
    QString key() const;
};

/// What a results file has, without its values.
struct NEREOINSPECTION_EXPORT FieldList {
    Io::ResultsFileHeader header;    ///< names no unknown fields
    std::vector<ListedField> fields; ///< whose columns the header has, even if the file has changed meanwhile
    QString error;                   ///< why these couldn't be read; empty if they could

    explicit FieldList(const InputFile& file);

    /// The field that is the same as that of another file; nullptr if there is none.
    const ListedField* find(const ListedField& field) const;

private:
    QHash<QString, int> places_; // by keys
};

/// Whether a field is one that is asked for by that name.
bool isNamed(const ListedField& field, const QString& name);

} // namespace Nereo::Inspection
