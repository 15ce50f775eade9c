#pragma once

#include <NereoFileIO/Material.h>

namespace Nereo::Io {

/// An element of a material that holds one number.
struct MaterialReferenceValue {
    const char* element;
    double (Material::*value)() const;
    void (Material::*setValue)(double);
};

/// In the order in which they are written.
inline constexpr MaterialReferenceValue materialReferenceValues[] = {
    {"ref_pressure",          &Material::refPressure,          &Material::setRefPressure         },
    {"ref_temperature",       &Material::refTemperature,       &Material::setRefTemperature      },
    {"ref_compressibility",   &Material::refCompressibility,   &Material::setRefCompressibility  },
    {"vapor_pressure",        &Material::vaporPressure,        &Material::setVaporPressure       },
    {"gas_constant",          &Material::gasConstant,          &Material::setGasConstant         },
    {"diffusion_coefficient", &Material::diffusionCoefficient, &Material::setDiffusionCoefficient},
};

} // namespace Nereo::Io
