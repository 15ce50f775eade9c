#pragma once

#include <NereoFileIO/Export.h>

#include <QString>
#include <QStringList>

/// The vocabulary of materials: the names in files, the names on screen, and the numbers of the solver.
namespace Clt {

/// What a material describes: a fluid, a solid, a fan, a heat sink and so on.
///
/// A value is an index into the table of MaterialType.def, for each row of which there is a constant
/// (MaterialType::InternalFan). Files carry name(), never the index. What names no row is the invalid value,
/// whose texts are empty.
///
/// Display names are translated once, all together, by the translators that are installed when a display name
/// is first asked for or looked up; translators that come later are never seen. All of this may be used from
/// any thread, but not by a translator itself.
class NEREOFILEIO_EXPORT MaterialType {
public:
#define MATERIAL_TYPE(object, name, displayName) static const MaterialType object;
#include <NereoFileIO/MaterialType.def>

    constexpr MaterialType() = default; ///< invalid

    /// The index isn't checked: one outside the table belongs to no type, although only -1 is invalid.
    constexpr explicit MaterialType(int index) : index_(index) {}

    /// The type with exactly this name in files, "internal_fan"; invalid if there is none.
    static MaterialType fromName(const QString& name);

    /// The type with exactly this name on screen, translated; invalid if there is none.
    static MaterialType fromDisplayName(const QString& displayName);

    /// The display names of all types in the order of their indices: in English until the first call of
    /// displayName() or fromDisplayName(), and translated from then on.
    static QStringList displayNames();

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

    /// Whether the flow solver models it as a part of the flow. Not the same as Material::fluidFlag(): a
    /// contact resistance is one and a heat sink isn't.
    bool isFlowComponent() const;

    friend constexpr bool operator==(MaterialType left, MaterialType right)
    {
        return left.index_ == right.index_;
    }
    friend constexpr bool operator!=(MaterialType left, MaterialType right)
    {
        return !(left == right);
    }

private:
    MaterialType(const char* name, const char* displayName); // adds a row to the table

    int index_ = -1;
};

} // namespace Clt
