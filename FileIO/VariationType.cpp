#include <NereoFileIO/VariationType.h>

#include "DisplayNames.h"

#include <QHash>
#include <QVector>

#include <algorithm>
#include <stdexcept>

namespace Clt {

namespace {

struct Row {
    QString name;
    QString displayName; // English
    int code = -1;

    QString translatedDisplayName() const { return translate("Clt::VariationType", displayName); }
};

struct Registry {
    QVector<Row> rows;
    Row invalid;
    QHash<QString, int> indices; // of the names and of the aliases
};

Registry& registry() // exists before the first row asks for it
{
    static Registry& instance = *new Registry; // outlives the destructors of other static objects
    return instance;
}

const Row& row(int index)
{
    const Registry& known = registry();
    return index >= 0 && index < known.rows.size() ? known.rows[index] : known.invalid;
}

template <class Predicate>
int findRow(Predicate predicate)
{
    const QVector<Row>& rows = registry().rows;
    const auto found = std::find_if(rows.begin(), rows.end(), predicate);
    return found == rows.end() ? -1 : int(found - rows.begin());
}

} // namespace

#define VARIATION_TYPE(object, name, displayName, code, alias)                                               \
    const VariationType VariationType::object(name, displayName, code, alias);
#include <NereoFileIO/VariationType.def>

VariationType::VariationType(const char* name, const char* displayName, int code, const char* alias)
    : index_(registry().rows.size())
{
    registry().rows.append({QString::fromLatin1(name), QString::fromLatin1(displayName), code});
    registry().indices.insert(this->name(), index_);
    if (*alias != '\0')
        registry().indices.insert(QString::fromLatin1(alias), index_);
}

VariationType VariationType::fromName(const QString& name)
{
    return VariationType(qAsConst(registry().indices).value(name, -1));
}

VariationType VariationType::fromDisplayName(const QString& displayName)
{
    return VariationType(findRow([&](const Row& row) { return row.translatedDisplayName() == displayName; }));
}

VariationType VariationType::fromCode(int code)
{
    const VariationType found(findRow([code](const Row& row) { return row.code == code; }));
    if (!found.isValid())
        throw std::runtime_error("Unrecognized variation type code");
    return found;
}

QString VariationType::name() const
{
    return row(index_).name;
}

QString VariationType::displayName() const
{
    return isValid() ? row(index_).translatedDisplayName() : QString();
}

int VariationType::code() const
{
    return row(index_).code;
}

} // namespace Clt
