#pragma once

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>

#include <tuple>

/// The lines that hold a record, for the reader, the writer and whoever else looks at control files.

namespace Nereo::Io {

// The fields in the order of the line, which is not always that of the record.

inline constexpr std::tuple inflationFields {
    &InflationData::switch1,  &InflationData::switch2,  &InflationData::switch3,  &InflationData::integer4,
    &InflationData::integer5, &InflationData::number6,  &InflationData::number7,  &InflationData::number8,
    &InflationData::number9,  &InflationData::number10, &InflationData::switch12, &InflationData::number11,
};

inline constexpr std::tuple autoYPlusFields {
    &AutoYPlusData::integer1, &AutoYPlusData::integer2, &AutoYPlusData::integer3,
    &AutoYPlusData::integer4, &AutoYPlusData::number5,  &AutoYPlusData::number6,
};

inline constexpr std::tuple smokeFields {
    &SmokeData::on,
    &SmokeData::number2,
    &SmokeData::number3,
    &SmokeData::number4,
};

inline constexpr std::tuple thermalComfortFields {
    &ThermalComfortData::on,
    &ThermalComfortData::number2,
    &ThermalComfortData::number3,
    &ThermalComfortData::number4,
};

/// Calls visit(record, its fields in the order of the line) when the code is that of a record, and says
/// whether it is.
template <class ControlFileType, class Visit>
bool visitRecord(ControlFileType& controlFile, int code, Visit visit)
{
    switch (code) {
    case kInflate:
        visit(controlFile.inflationData(), inflationFields);
        return true;
    case kAutoYP:
        visit(controlFile.autoYPlusData(), autoYPlusFields);
        return true;
    case kSmokeOn:
        visit(controlFile.smokeData(), smokeFields);
        return true;
    case kThComfOn:
        visit(controlFile.thermalComfortData(), thermalComfortFields);
        return true;
    default:
        return false;
    }
}

/// A line of the section "Auto Convergence Control".
struct Criterion {
    const char* text;
    double AutoConvData::*threshold;
};

constexpr Criterion criteria[] = {
    {"Instantaneous Convergence Curve Slope",    &AutoConvData::instantaneousSlope  },
    {"Time-Average Convergence Curve Slope",     &AutoConvData::timeAverageSlope    },
    {"Time-Average Convergence Curve Concavity", &AutoConvData::timeAverageConcavity},
    {"Field Fluctuation",                        &AutoConvData::fieldFluctuation    },
};

} // namespace Nereo::Io
