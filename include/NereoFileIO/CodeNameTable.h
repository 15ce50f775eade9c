#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/FieldVariable.h>

#include <QMap>
#include <QString>
#include <QVector>

namespace Nereo::Io {

/// Turns the names of field variables and node flags into their codes, and codes into names.
///
/// Names are compared exactly: case counts, and so does white space. "kKXX", "kKYY" and "kKZZ", the
/// components of the conductivity, are further names of kCond, kGen and kMixF and win over every other name.
/// Such a code therefore doesn't come back as the name that it was looked up by: "kCond" and the flag
/// "kVolumeRate" are both 27, which is always named "kKXX".
///
/// There is one table in a process. It never changes and exists until the process ends, so that any thread
/// may use it at any time, and destructors of static objects may too.
class NEREOFILEIO_EXPORT CodeNameTable {
public:
    static const CodeNameTable& instance(); ///< created by the first call

    CodeNameTable(const CodeNameTable&) = delete;
    CodeNameTable& operator=(const CodeNameTable&) = delete;
    ~CodeNameTable() = delete;

    /// The FieldVariable or NodeFlag with the name; kNone for every other text.
    int codeForName(const QString& name) const;

    /// The name of a code from 0 to kNone: that of the flag, if flag names are preferred and there is one, or
    /// else that of the field variable. Code 0 has an empty name. Any other code stops the process.
    QString nameForCode(int code, bool preferFlagName) const;

private:
    CodeNameTable();

    QMap<QString, int> fieldVariableCodes_;
    QVector<QString> fieldVariableNames_; // each at the index of its code
    QMap<QString, int> flagCodes_;
    QMap<int, QString> flagNames_;
    QMap<QString, int> aliasCodes_;
    QMap<int, QString> aliasNames_;
};

} // namespace Nereo::Io
