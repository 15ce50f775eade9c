#pragma once

#include <NereoFileIO/Export.h>

#include <QString>

namespace Clt {

/// How a property of a material varies: not at all, as a polynomial, along a curve of points and so on.
///
/// A value is an index into the table of VariationType.def, for each row of which there is a constant
/// (VariationType::PiecewiseLinear). Files carry name(), never the index. What names no row is the invalid
/// value, whose texts are empty and whose code is -1.
///
/// Display names are translated afresh at each call, so they follow the translators that the application
/// installs. All of this may be used from any thread.
class NEREOFILEIO_EXPORT VariationType {
public:
#define VARIATION_TYPE(object, name, displayName, code, alias) static const VariationType object;
#include <NereoFileIO/VariationType.def>

    constexpr VariationType() = default; ///< invalid

    /// The type with exactly this name in files, "equation_of_state", or with this name in older files,
    /// "EOS"; invalid if there is none.
    static VariationType fromName(const QString& name);

    /// The first type with exactly this name on screen, translated; invalid if there is none.
    static VariationType fromDisplayName(const QString& displayName);

    /// The first type with the solver's code: Constant for 1, HeadCapacityCurve for 27. Throws
    /// std::runtime_error with "Unrecognized variation type code" if there is none.
    static VariationType fromCode(int code);

    /// From 0, or -1 when invalid.
    constexpr int index() const
    {
        return index_;
    }
    constexpr bool isValid() const
    {
        return index_ != -1;
    }

    QString name() const;        ///< in files, never the older one
    QString displayName() const; ///< on screen, translated
    int code() const;            ///< the solver's, which other types may share

    friend constexpr bool operator==(VariationType left, VariationType right)
    {
        return left.index_ == right.index_;
    }
    friend constexpr bool operator!=(VariationType left, VariationType right)
    {
        return !(left == right);
    }

private:
    constexpr explicit VariationType(int index) : index_(index) {}
    VariationType(const char* name, const char* displayName, int code, const char* alias); // adds a row

    int index_ = -1;
};

} // namespace Clt
