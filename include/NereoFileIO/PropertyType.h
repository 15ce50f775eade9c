#pragma once

#include <NereoFileIO/Export.h>

#include <QString>

namespace Clt {

/// A property that a material can have: density, viscosity, emissivity, the fins of a heat sink and so on.
///
/// A value is an index into the table of PropertyType.def, for each row of which there is a constant
/// (PropertyType::Density). Files carry name(), never the index. What names no row is the invalid value; to
/// ask it for its name, display name, code or unit category stops the process.
///
/// Display names are translated once, all together, by the translators that are installed when a display name
/// is first asked for or looked up; translators that come later are never seen. All of this may be used from
/// any thread, but not by a translator itself.
class NEREOFILEIO_EXPORT PropertyType {
public:
#define PROPERTY_TYPE(object, name, displayName, unitCategory, code) static const PropertyType object;
#include <NereoFileIO/PropertyType.def>

    constexpr PropertyType() = default; ///< invalid

    /// The type with exactly this name in files, "specific_heat"; invalid if there is none.
    static PropertyType fromName(const QString& name);

    /// The first type with exactly this name on screen, translated; invalid if there is none.
    static PropertyType fromDisplayName(const QString& displayName);

    /// The first type with this field-variable code, so Conductivity for 27 and BulkModulus for kNone;
    /// invalid if there is none.
    static PropertyType fromCode(int code);

    /// From 0, or -1 when invalid.
    constexpr int index() const
    {
        return index_;
    }
    constexpr bool isValid() const
    {
        return index_ != -1;
    }

    QString name() const;        ///< in files
    QString displayName() const; ///< on screen, translated

    /// The code of the field variable, kNone where the property has none of its own.
    int code() const;

    /// The product's code of the quantity that the values are in; -1 without a unit.
    int unitCategory() const;

    friend constexpr bool operator==(PropertyType left, PropertyType right)
    {
        return left.index_ == right.index_;
    }
    friend constexpr bool operator!=(PropertyType left, PropertyType right)
    {
        return !(left == right);
    }

private:
    constexpr explicit PropertyType(int index) : index_(index) {}
    PropertyType(const char* name, const char* displayName, int unitCategory, int code); // adds a row

    int index_ = -1;
};

} // namespace Clt
