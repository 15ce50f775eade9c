#pragma once

#include <NereoFileIO/SaveResult.h>
#include <NereoInspection/Export.h>
#include <NereoInspection/FileKind.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nereo::Inspection {

/// Why a file can't be edited, or an edit is refused.
enum class EditProblem {
    None,
    CannotOpen,     ///< the file can't be opened, or not be read to its end
    NotEditable,    ///< it is no configuration, control file or material database
    UnknownAddress, ///< no file of the kind has such a value
    NotThere,       ///< the file lacks the value, and it is none that is added
    NotRemovable,   ///< the value is neither a setting, nor a constant, nor a flag
    NotAnInteger,
    NotANumber,
    OutOfRange,  ///< a number that a load can't hold
    NotASwitch,  ///< neither 0 nor 1
    NotAVersion, ///< not four whole numbers joined by dots
    CannotCarry, ///< a text that a load of the file wouldn't give back
    Doubtful,    ///< it can't be told for sure which bytes are the value's
    NewFinding   ///< a check would find something that it doesn't find now
};

/// What became of edits: all of them are done, or none.
struct EditResult {
    EditProblem problem = EditProblem::None;
    QString address; ///< of the edit that is refused; empty where none is or the file is the problem
    QString message; ///< why, in English, and the nearest address; empty where all is well

    /// The address that was probably meant where there is none such (UnknownAddress, NotThere): one of the
    /// file, or one that can be added to it if something is to be set. Empty if none is near.
    QString nearest = {};

    explicit operator bool() const { return problem == EditProblem::None; }
};

/// A value that an address gets, or that is taken away.
struct Edit {
    QString address;
    std::optional<QString> text; ///< none: the value is removed
};

/// What an address had in the file, and what it has now. As texts: of a number what stands in the file
/// without the blanks around it, of a text what a load gives.
struct ValueChange {
    QString address;
    std::optional<QString> before; ///< none: it wasn't there
    std::optional<QString> after;  ///< none: it isn't there any more
};

/// A file of which values are changed, and no other byte. Comments, order, blanks, line ends, the encoding
/// with its byte-order mark, unknown sections and elements stay as they are.
///
/// Values have the addresses of outline(). Of a value that the file says several times that one is set which
/// counts for a load; of flags of one name each is a value of its own, "flags/x" the first, which a look-up
/// by name gives, and "flags/x#2" the second.
///
/// A number is written as it is given if a load of the file reads all of it, otherwise in the shortest form
/// that a load reads as the same number. A control file reads 0x10 as 16 and 010 as 8, and so does an edit of
/// one. A switch is "0" or "1".
///
/// What the file lacks is added where a writer would put it, indented as its neighbours and with their line
/// ends: settings, constants and flags, for which a missing section of a control file is made, and elements
/// of a material, property or point that is there. The number of flags is put right. Removed are settings,
/// constants and flags, and no empty line is left behind.
///
/// A file with errors can be edited where it is sure which bytes are those of the value. No edit makes a new
/// finding of check().
///
/// The bytes of the file are held in memory, and a few hundred more for each value.
class NEREOINSPECTION_EXPORT FileEdit {
public:
    /// Reads a file. Unknown: it is of the kind that its content tells.
    explicit FileEdit(const std::string& path, FileKind kind = FileKind::Unknown);

    /// Takes bytes for what stands in a file. Its name tells whether a load takes a configuration for XML.
    FileEdit(const std::string& name, const QByteArray& bytes, FileKind kind = FileKind::Unknown);

    FileEdit(FileEdit&& other) noexcept;
    FileEdit& operator=(FileEdit&& other) noexcept;
    ~FileEdit();

    /// Whether the file can be edited, and why not. Where it can't, every edit gives the same.
    EditResult state() const;

    FileKind kind() const;

    /// The value of an address, as ValueChange has it; none if the file lacks it.
    std::optional<QString> value(const QString& address) const;

    // Each does all that it is asked to, or nothing: then it says of the first edit that is refused why.

    EditResult set(const QString& address, const QString& text);
    EditResult set(const QString& address, int value);
    EditResult set(const QString& address, double value); ///< in the shortest form that reads back
    EditResult remove(const QString& address);
    EditResult apply(const std::vector<Edit>& edits); ///< one after the other

    /// What is different from the file as it was read, in the order in which it was first edited.
    std::vector<ValueChange> changes() const;

    const QByteArray& originalBytes() const;
    const QByteArray& bytes() const; ///< what the file is to hold

    /// Writes the bytes to the file that was read, or to another one: whole or not at all. A file that can't
    /// be edited is not written.
    Io::SaveResult save() const;
    Io::SaveResult saveTo(const std::string& path) const;

private:
    class State;
    std::unique_ptr<State> state_;
};

} // namespace Nereo::Inspection
