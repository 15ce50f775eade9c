#pragma once

#include <NereoInspection/Export.h>
#include <NereoInspection/FileKind.h>
#include <NereoInspection/Place.h>

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <string>

namespace Nereo::Inspection {

/// One value of a file, as it stands there.
struct Item {
    enum class Type {
        Integer, ///< 32 bits, signed
        Number,  ///< a double
        Switch,  ///< 0 or 1
        Text,
        Version, ///< whole numbers joined by dots
        Field    ///< a field of results: its name stands at the place, and the value is how many it has
    };

    /// Names the value within the file, as in "relaxation/kU/under". In a part of it "/", "%" and "#" are
    /// written %2F, %25 and %23; "#2" behind a part means the second of that name, and "#3" alone the third,
    /// which has no name. Where a file says something again and the last one counts, all have one address.
    /// A name of more than 200 characters is cut, and a digest of it tells it from others.
    QString address;
    Type type = Type::Text;
    Place place;       ///< of its first character; of an empty value where it would stand
    qint64 length = 0; ///< in bytes of the file, as far as the place has an offset
    QString spelling;  ///< what stands in the file
    QVariant value;    ///< what a load makes of it: an int, a double, a bool or a QString
};

using ItemVisitor = std::function<void(const Item&)>;

/// Tells the visitor of every value of a file, in the order of the file. False if the file can't be opened,
/// or is of no kind that has an outline.
///
/// Whatever stands in the file, nothing is thrown and nothing stops; behind the place at which a load would
/// end the walk goes on as if it had not, except that malformed XML ends there. Exceptions of the visitor
/// pass.
NEREOINSPECTION_EXPORT bool outline(const std::string& path, FileKind kind, const ItemVisitor& visit);

/// The same of the kind that the file's content tells.
NEREOINSPECTION_EXPORT bool outline(const std::string& path, const ItemVisitor& visit);

/// A part of an address, from a name as the file has it.
NEREOINSPECTION_EXPORT QString addressPart(const QString& name);

/// The one of the known addresses that somebody probably meant by an address that isn't among them; empty if
/// none is near. Near are those with as many parts, each of which differs by its case or a few letters, and
/// those of which the address is the beginning or the end.
NEREOINSPECTION_EXPORT QString nearestAddress(const QString& address, const QStringList& known);

} // namespace Nereo::Inspection
