#pragma once

#include <NereoFileIO/Material.h>

namespace Nereo::Io {

/// An element of a material that holds one number.
struct MaterialReferenceValue {
    const char* element;
    double (Material::*value)() const;
    void (Material::*setValue)(double);
    bool isOfSolids; // fluids have all of them
};

/// In the order in which they are written.
inline constexpr MaterialReferenceValue materialReferenceValues[] = {
    {"ref_pressure",          &Material::refPressure,          &Material::setRefPressure,          false},
    {"ref_temperature",       &Material::refTemperature,       &Material::setRefTemperature,       true },
    {"ref_compressibility",   &Material::refCompressibility,   &Material::setRefCompressibility,   false},
    {"vapor_pressure",        &Material::vaporPressure,        &Material::setVaporPressure,        false},
    {"gas_constant",          &Material::gasConstant,          &Material::setGasConstant,          false},
    {"diffusion_coefficient", &Material::diffusionCoefficient, &Material::setDiffusionCoefficient, false},
};

} // namespace Nereo::Io
