#include <NereoFileIO/Material.h>

#include <NereoFileIO/MaterialType.h>
#include <NereoFileIO/PropertyType.h>
#include <NereoUtility/StringConversion.h>

#include <QHash>

#include <array>

namespace Nereo::Io {

namespace {

using Clt::MaterialType;
using Clt::PropertyType;

constexpr std::array fluidProperties = {
    &PropertyType::Density,        &PropertyType::Viscosity,      &PropertyType::Conductivity,
    &PropertyType::SpecificHeat,   &PropertyType::SurfaceTension, &PropertyType::Emissivity,
    &PropertyType::Transmissivity, &PropertyType::Resistivity,    &PropertyType::Roughness,
};

// No oversight: the files of solids have a viscosity and a surface tension, but no transmissivity.
constexpr std::array solidProperties = {
    &PropertyType::Density,        &PropertyType::Viscosity,     &PropertyType::XConductivity,
    &PropertyType::YConductivity,  &PropertyType::ZConductivity, &PropertyType::SpecificHeat,
    &PropertyType::SurfaceTension, &PropertyType::Emissivity,    &PropertyType::Resistivity,
    &PropertyType::Roughness,
};

struct Flags {
    const MaterialType* type;
    int fluid;
    int resist;
};

// The solver's numbers: there is no 4, 5 or 8, and 13 is none of the others.
constexpr Flags flagsByType[] = {
  // type                             fluid, resistance
    {&MaterialType::Fluid,                1, 0 },
    {&MaterialType::Solid,                0, 0 },
    {&MaterialType::Resistance,           1, 1 },
    {&MaterialType::InternalFan,          1, 2 },
    {&MaterialType::CheckValve,           1, 3 },
    {&MaterialType::CentrifugalFan,       1, 6 },
    {&MaterialType::RotatingDevice,       1, 7 },
    {&MaterialType::Ecomp2resist,         0, 9 },
    {&MaterialType::PrintedCircuitBoards, 0, 10},
    {&MaterialType::EcompTec,             0, 11},
    {&MaterialType::ContactResistance,    0, 12},
    {&MaterialType::LedDevice,            0, 14},
    {&MaterialType::HeatExchanger,        1, 15},
    {&MaterialType::HeatSink,             1, 16},
};

constexpr Flags unassigned {&MaterialType::Unassigned, 0, 13}; // and what isn't known

int codeOf(const std::string& propertyType)
{
    return PropertyType::fromName(Util::toQString(propertyType)).code();
}

Flags flagsOf(const QString& typeName)
{
    const MaterialType type = MaterialType::fromName(typeName);
    for (const Flags& flags : flagsByType) {
        if (*flags.type == type)
            return flags;
    }
    return unassigned;
}

} // namespace

Material::Material() : Material("fluid") {}

Material::Material(const std::string& type) : type_(Util::toQString(type))
{
    const MaterialType knownType = MaterialType::fromName(type_);
    if (knownType == MaterialType::Fluid) {
        for (const PropertyType* property : fluidProperties)
            addProperty(*property);
    } else if (knownType == MaterialType::Solid) {
        for (const PropertyType* property : solidProperties)
            addProperty(*property);
    }
}

Material::Material(const Material& other) = default;
Material& Material::operator=(const Material& other) = default;
Material::Material(Material&& other) noexcept = default;
Material& Material::operator=(Material&& other) noexcept = default;
Material::~Material() = default;

std::string Material::name() const
{
    return Util::toStdString(name_);
}

void Material::setName(const std::string& name)
{
    name_ = Util::toQString(name);
}

std::string Material::type() const
{
    return Util::toStdString(type_);
}

int Material::id() const
{
    return id_;
}

void Material::setId(int id)
{
    id_ = id;
}

Material::EnvironmentType Material::environmentType() const
{
    return environmentType_;
}

void Material::setEnvironmentType(EnvironmentType environmentType)
{
    environmentType_ = environmentType;
}

double Material::refPressure() const
{
    return refPressure_;
}

void Material::setRefPressure(double refPressure)
{
    refPressure_ = refPressure;
}

double Material::refTemperature() const
{
    return refTemperature_;
}

void Material::setRefTemperature(double refTemperature)
{
    refTemperature_ = refTemperature;
}

double Material::refCompressibility() const
{
    return refCompressibility_;
}

void Material::setRefCompressibility(double refCompressibility)
{
    refCompressibility_ = refCompressibility;
}

double Material::vaporPressure() const
{
    return vaporPressure_;
}

void Material::setVaporPressure(double vaporPressure)
{
    vaporPressure_ = vaporPressure;
}

double Material::gasConstant() const
{
    return gasConstant_;
}

void Material::setGasConstant(double gasConstant)
{
    gasConstant_ = gasConstant;
}

double Material::diffusionCoefficient() const
{
    return diffusionCoefficient_;
}

void Material::setDiffusionCoefficient(double diffusionCoefficient)
{
    diffusionCoefficient_ = diffusionCoefficient;
}

MaterialProperty& Material::property(const std::string& name)
{
    return property(codeOf(name));
}

MaterialProperty& Material::property(int code)
{
    return properties_[code];
}

MaterialProperty Material::property(const std::string& name) const
{
    return property(codeOf(name));
}

MaterialProperty Material::property(int code) const
{
    const MaterialProperty* const found = findProperty(code);
    return found == nullptr ? MaterialProperty() : *found;
}

const MaterialProperty* Material::findProperty(int code) const
{
    const auto found = properties_.find(code);
    return found == properties_.end() ? nullptr : &found->second;
}

std::list<int> Material::propertyCodes() const
{
    std::list<int> codes;
    for (const auto& [code, property] : properties_)
        codes.push_back(code);
    return codes;
}

int Material::fluidFlag() const
{
    return flagsOf(type_).fluid;
}

int Material::resistFlag() const
{
    return flagsOf(type_).resist;
}

void Material::addProperty(const PropertyType& type)
{
    properties_[type.code()].type_ = type.name(); // the text is shared by all materials
}

bool operator==(const Material& left, const Material& right)
{
    return left.type_ == right.type_ && left.name_ == right.name_;
}

bool operator!=(const Material& left, const Material& right)
{
    return !(left == right);
}

uint qHash(const Material& material)
{
    return ::qHash(material.name_, 0);
}

} // namespace Nereo::Io
