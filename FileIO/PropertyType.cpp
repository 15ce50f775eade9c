#include <NereoFileIO/PropertyType.h>

#include "Assertion.h"
#include "DisplayNames.h"

#include <QHash>
#include <QVector>

#include <algorithm>

namespace Clt {

namespace {

struct Row {
    QString name;
    int unitCategory;
    int code;
};

struct Registry {
    QVector<Row> rows;
    QHash<QString, int> indices; // of the names
    DisplayNames displayNames {"Clt::PropertyType"};
};

Registry& registry() // exists before the first row asks for it
{
    static Registry& instance = *new Registry; // outlives the destructors of other static objects
    return instance;
}

template <class Column>
const Column& at(const QVector<Column>& rows, int index)
{
    NEREO_ASSERT_INDEX(index, rows.size(), "QVector<T>::operator[]", "FileIO/PropertyType");
    return rows[index];
}

const Row& row(int index)
{
    return at(registry().rows, index);
}

} // namespace

#define PROPERTY_TYPE(object, name, displayName, unitCategory, code)                                         \
    const PropertyType PropertyType::object(name, displayName, unitCategory, code);
#include <NereoFileIO/PropertyType.def>

PropertyType::PropertyType(const char* name, const char* displayName, int unitCategory, int code)
    : index_(registry().rows.size())
{
    registry().rows.append({QString::fromLatin1(name), unitCategory, code});
    registry().indices.insert(this->name(), index_);
    registry().displayNames.append(QString::fromLatin1(displayName));
}

PropertyType PropertyType::fromName(const QString& name)
{
    return PropertyType(qAsConst(registry().indices).value(name, -1));
}

PropertyType PropertyType::fromDisplayName(const QString& displayName)
{
    return PropertyType(registry().displayNames.translated().indexOf(displayName));
}

PropertyType PropertyType::fromCode(int code)
{
    const QVector<Row>& rows = registry().rows;
    const auto found =
        std::find_if(rows.begin(), rows.end(), [code](const Row& row) { return row.code == code; });
    return found == rows.end() ? PropertyType() : PropertyType(int(found - rows.begin()));
}

QString PropertyType::name() const
{
    return row(index_).name;
}

QString PropertyType::displayName() const
{
    return at(registry().displayNames.translated(), index_);
}

int PropertyType::code() const
{
    return row(index_).code;
}

int PropertyType::unitCategory() const
{
    return row(index_).unitCategory;
}

} // namespace Clt
