#pragma once

#include "FileEncoding.h"
#include "InputFile.h"

#include <NereoInspection/Edit.h>
#include <NereoInspection/Outline.h>

#include <QHash>

#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace Nereo::Inspection {

/// Leaves an edit that can't be done.
class NEREOINSPECTION_EXPORT Refusal : public std::exception {
public:
    Refusal(EditProblem problem, QString message) : problem_(problem), message_(std::move(message)) {}

    EditProblem problem() const { return problem_; }
    const QString& message() const { return message_; }

private:
    EditProblem problem_;
    QString message_;
};

/// Bytes that stand for others of a file.
struct Replacement {
    qint64 begin;
    qint64 end;
    QByteArray bytes;
};

using Replacements = std::vector<Replacement>;

/// The bytes with all of the replacements, of which none may overlap. Of those at one place the first comes
/// first.
NEREOINSPECTION_EXPORT QByteArray replaced(const QByteArray& bytes, Replacements replacements);

/// A value as it is to be written.
struct NewText {
    QString text;
    QVariant value; ///< what a load makes of it
};

/// A file that is edited, with all that a walk says of it.
class EditedFile {
public:
    EditedFile(const std::string& name, const QByteArray& bytes, FileKind kind);

    const InputFile& input() const { return *input_; }
    const QByteArray& bytes() const { return bytes_; }
    FileKind kind() const { return kind_; }
    FileEncoding encoding() const;

    const std::vector<Item>& items() const { return items_; }

    /// The value that counts of those with an address; nullptr if there is none.
    const Item* find(const QString& address) const;

    /// A finding of a check that it hasn't got and the other file has; empty if there is none. Where a
    /// material gets another name, all addresses in it get others.
    QString newFindingIn(const EditedFile& changed, bool isRenamed) const;

    bool hasErrors() const { return hasErrors_; }

private:
    class Hearer;
    using Findings = QHash<QString, int>;

    QByteArray bytes_;
    std::unique_ptr<InputFile> input_;
    FileKind kind_;
    std::vector<Item> items_;
    QHash<QString, int> last_; ///< the places of the values that count
    Findings findings_;        ///< how many there are of each code and address
    bool hasErrors_ = false;
};

/// What an address is, shown or compared: of a number what stands in the file, of a text what a load gives.
QString shownText(const Item& item);

/// A name out of a part of an address; none if the part isn't written as addressPart() writes it.
std::optional<QString> nameOfPart(const QString& part);

/// The address without the numbers of names that stand there several times.
QString withoutPlaces(const QString& address);

/// What stands in an address behind the name of a material; all of it where there is none.
QString withoutMaterial(FileKind kind, const QString& address);

} // namespace Nereo::Inspection
