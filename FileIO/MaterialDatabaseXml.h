#pragma once

#include "MaterialReferenceValues.h"

#include <NereoFileIO/MaterialType.h>
#include <NereoFileIO/VariationType.h>

/// The words of a material database in XML, and which of them are written of what.

namespace Nereo::Io {

namespace MaterialXml {

inline constexpr char database[] = "material_database";
inline constexpr char versionAttribute[] = "version";

inline constexpr char material[] = "material";
inline constexpr char property[] = "property";
inline constexpr char typeAttribute[] = "type"; // of both
inline constexpr char name[] = "name";
inline constexpr char id[] = "id";

inline constexpr char variationType[] = "variation_type";
inline constexpr char value[] = "value";
inline constexpr char independentVariable[] = "independent_variable";
inline constexpr char point[] = "point";
inline constexpr char x[] = "x";
inline constexpr char y[] = "y";

} // namespace MaterialXml

inline bool isWritten(const MaterialReferenceValue& reference, Clt::MaterialType type)
{
    return type == Clt::MaterialType::Fluid || (type == Clt::MaterialType::Solid && reference.isOfSolids);
}

inline bool isValueWritten(Clt::VariationType variation)
{
    return variation == Clt::VariationType::Constant || variation == Clt::VariationType::EquationOfState;
}

/// The independent variable and the points.
inline bool isCurveWritten(Clt::VariationType variation)
{
    return variation == Clt::VariationType::PiecewiseLinear;
}

} // namespace Nereo::Io
