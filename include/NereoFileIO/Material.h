#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/MaterialProperty.h>

#include <QString>

#include <list>
#include <map>
#include <string>

namespace Clt {
class PropertyType;
} // namespace Clt

namespace Nereo::Io {

/// A material: a named fluid, solid, fan, heat sink or the like with its reference values and properties.
///
/// The type is a name of Clt::MaterialType and never changes. A "fluid" and a "solid" come with the
/// properties that such a material has, all constant zero; any other type, known or not, starts without
/// properties.
///
/// Properties are keyed by the field-variable code of their type, and there is one for each code. So
/// "conductivity" and "x_conductivity", both 27, are one property of a material, and so are all the types
/// without a field variable of their own, whose code is kNone: a heat sink's "base_thickness" is its
/// "sink_conductivity".
///
/// A reference to a property holds until the whole material is assigned to.
class NEREOFILEIO_EXPORT Material {
public:
    /// How the product classifies the surroundings; it has the enumerators. 0 for a new material.
    enum EnvironmentType : int {};

    static constexpr int InvalidId = 0; ///< the id of a material that has none

    Material(); ///< a "fluid"
    explicit Material(const std::string& type);
    Material(const Material& other);
    Material& operator=(const Material& other);
    Material(Material&& other) noexcept;
    Material& operator=(Material&& other) noexcept;
    ~Material();

    std::string name() const;
    void setName(const std::string& name);

    std::string type() const;

    int id() const;
    void setId(int id);

    EnvironmentType environmentType() const;
    void setEnvironmentType(EnvironmentType environmentType);

    double refPressure() const;
    void setRefPressure(double refPressure);

    double refTemperature() const;
    void setRefTemperature(double refTemperature);

    double refCompressibility() const;
    void setRefCompressibility(double refCompressibility);

    double vaporPressure() const;
    void setVaporPressure(double vaporPressure);

    double gasConstant() const;
    void setGasConstant(double gasConstant);

    double diffusionCoefficient() const;
    void setDiffusionCoefficient(double diffusionCoefficient);

    /// The property with the code of this property type. Stops the process when the name is none of
    /// Clt::PropertyType.
    ///
    /// A property that isn't there yet is added, without a type and constant zero; what is there is given
    /// whatever its type.
    MaterialProperty& property(const std::string& name);
    MaterialProperty& property(int code);

    /// The same, but a property that isn't there is given as a new one and not added.
    MaterialProperty property(const std::string& name) const;
    MaterialProperty property(int code) const;

    /// The property itself, or null when it isn't there. Holds as a reference to it does.
    const MaterialProperty* findProperty(int code) const;

    std::list<int> propertyCodes() const; ///< of the properties that are there, ascending

    int fluidFlag() const;  ///< 1 for a fluid and for what the solver models as a part of one, otherwise 0
    int resistFlag() const; ///< the solver's number for the type as a resistance; 13 when it knows none

    /// Only type and name are compared.
    friend NEREOFILEIO_EXPORT bool operator==(const Material& left, const Material& right);
    friend NEREOFILEIO_EXPORT bool operator!=(const Material& left, const Material& right);

    friend NEREOFILEIO_EXPORT uint qHash(const Material& material);

private:
    friend class MaterialDatabaseFile; // compares many names

    void addProperty(const Clt::PropertyType& type);

    QString name_;
    QString type_;
    int id_ = InvalidId;
    EnvironmentType environmentType_ = EnvironmentType(0);
    double refPressure_ = 0.0;
    double refTemperature_ = 0.0;
    double refCompressibility_ = 0.0;
    double vaporPressure_ = 0.0;
    double gasConstant_ = 0.0;
    double diffusionCoefficient_ = 0.0;
    std::map<int, MaterialProperty> properties_;
};

/// For QHash and QSet.
NEREOFILEIO_EXPORT uint qHash(const Material& material);

} // namespace Nereo::Io
