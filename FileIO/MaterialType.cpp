#include <NereoFileIO/MaterialType.h>

#include "DisplayNames.h"

#include <algorithm>

namespace Clt {

namespace {

struct Registry {
    QStringList names;
    DisplayNames displayNames {"Clt::MaterialType"};
};

Registry& registry() // exists before the first row asks for it
{
    static Registry& instance = *new Registry; // outlives the destructors of other static objects
    return instance;
}

} // namespace

#define MATERIAL_TYPE(object, name, displayName) const MaterialType MaterialType::object(name, displayName);
#include <NereoFileIO/MaterialType.def>

MaterialType::MaterialType(const char* name, const char* displayName) : index_(registry().names.size())
{
    registry().names.append(QString::fromLatin1(name));
    registry().displayNames.append(QString::fromLatin1(displayName));
}

MaterialType MaterialType::fromName(const QString& name)
{
    return MaterialType(registry().names.indexOf(name));
}

MaterialType MaterialType::fromDisplayName(const QString& displayName)
{
    return MaterialType(registry().displayNames.translated().indexOf(displayName));
}

QStringList MaterialType::displayNames()
{
    return registry().displayNames.current().toList();
}

QString MaterialType::name() const
{
    return registry().names.value(index_);
}

QString MaterialType::displayName() const
{
    return registry().displayNames.translated().value(index_);
}

bool MaterialType::isFlowComponent() const
{
    const MaterialType components[] = {Fluid,          ContactResistance, Resistance, InternalFan,
                                       CentrifugalFan, RotatingDevice,    CheckValve, HeatExchanger};
    return std::find(std::begin(components), std::end(components), *this) != std::end(components);
}

} // namespace Clt
