#include <NereoFileIO/VariationType.h>

#include <gmock/gmock.h>

#include <stdexcept>

namespace Clt {
namespace {

using ::testing::ThrowsMessage;

const struct {
    VariationType type;
    const char* name;
    const char* displayName;
    int code;
    const char* alias;
} rows[] = {
  // constant, name in files, name on screen, solver's code, name in older files; the index is the place
  // here
    {VariationType::Constant,                 "constant",                    "Constant",                    1,  ""              },
    {VariationType::EquationOfState,          "equation_of_state",           "Equation of State",           2,  "EOS"           },
    {VariationType::PowerLaw,                 "power_law",                   "Power Law",                   3,  ""              },
    {VariationType::Sutherland,               "sutherland",                  "Sutherland",                  4,  ""              },
    {VariationType::Polynomial,               "polynomial",                  "Polynomial",                  5,  ""              },
    {VariationType::PolynomialCoefficients,   "polynomial_coefficients",     "Polynomial Coefficient",      36,
     "poly_coef"                                                                                                                },
    {VariationType::InversePolynomial,        "inverse_polynomial",          "Inverse Polynomial",          6,  "inv_polynomial"},
    {VariationType::AdiabaticEquationOfState, "adiabatic_equation_of_state", "Adiabatic Equation of State", 7,
     "AEOS"                                                                                                                     },
    {VariationType::SameAsKxx,                "same_as_kxx",                 "Same as X-dir.",              8,  ""              },
    {VariationType::SteamTables,              "steam_tables",                "Thermodynamic Tables",        14, ""              },
    {VariationType::PiecewiseLinear,          "piecewise_linear",            "Piecewise Linear",            15, "piece_linear"  },
    {VariationType::MoistGas,                 "moist_gas",                   "Moist Gas",                   16, ""              },
    {VariationType::Arrhenius,                "arrhenius",                   "Arrhenius",                   10, ""              },
    {VariationType::FreeAreaRatio,            "free_area_ratio",             "Free Area Ratio",             26, ""              },
    {VariationType::FrictionFactor,           "friction_factor",             "Friction Factor",             25, ""              },
    {VariationType::HeadCapacityCurve,        "head_capacity_curve",         "Head Capacity Curve",         27, ""              },
    {VariationType::Permeability,             "permeability",                "Permeability",                1,  ""              },
    {VariationType::NonnewtPowerLaw,          "nonnewt_power_law",           "NonNewt Pwr Law",             9,  ""              },
    {VariationType::HerschelBuckley,          "herschel_buckley",            "Herschel-Buckley",            17, ""              },
    {VariationType::Carreau,                  "carreau",                     "Carreau",                     18, ""              },
    {VariationType::FirstOrderPolymer,        "1st_order_polymer",           "1st Order Polymer",           28, ""              },
    {VariationType::SecondOrderPolymer,       "2nd_order_polymer",           "2nd Order Polymer",           23, ""              },
    {VariationType::FanCurve,                 "fan_curve",                   "Fan Curve",                   27, ""              },
    {VariationType::VelocityProfile,          "velocity_profile",            "Velocity Profile",            33, ""              },
    {VariationType::TimeTable,                "time_table",                  "Table",                       29, ""              },
    {VariationType::Reciprocating,            "reciprocating",               "Reciprocating",               1,  ""              },
    {VariationType::Oscillating,              "oscillating",                 "Oscillating",                 1,  ""              },
    {VariationType::ConstantAngularSpeed,     "constant_angular_speed",      "Constant Angular Speed",      1,  ""              },
    {VariationType::ConstantLinearSpeed,      "constant_linear_speed",       "Constant Linear Speed",       1,  ""              },
    {VariationType::Spring,                   "spring",                      "Spring",                      1,  ""              },
    {VariationType::TorsionSpring,            "torsion_spring",              "Torsion Spring",              1,  ""              },
    {VariationType::TableWithAngularPosition, "table_with_angular_position", "Table with Angular Position",
     32,                                                                                                        ""              },
    {VariationType::PcbTracesAndPlanes,       "pcb_traces_and_planes",       "Traces And Planes",           5,  ""              },
    {VariationType::PcbDielectric,            "pcb_dielectric",              "Dielectric",                  1,  ""              },
    {VariationType::TecControl,               "tec_control",                 "Control Code",                1,  ""              },
    {VariationType::TecSize,                  "tec_size",                    "Size/NumCouples",             1,  ""              },
    {VariationType::TecParameters,            "tec_parameters",              "TEC parameter limits",        1,  "tec_parms"     },
    {VariationType::HeatExchanger,            "heat_exchanger",              "Heat Exchanger",              37, ""              },
    {VariationType::TemperatureChange,        "temperature_change",          "Temperature Change",          38, ""              },
    {VariationType::HeatInputExtractionRate,  "heat_input_extraction_rate",  "Heat Input/Extraction Rate",  39,
     ""                                                                                                                         },
    {VariationType::AirConditioner,           "air_conditioner",             "Air Conditioner",             40, ""              },
    {VariationType::AdiabaticHumidification,  "adiabatic_humidification",    "Adiabatic Humidification",    44, ""              },
    {VariationType::SteamHumidification,      "steam_humidification",        "Steam Humidification",        42, ""              },
    {VariationType::EnthalpyHumidification,   "enthalpy_humidification",     "Enthalpy Heat Exchanger",     43, ""              },
    {VariationType::Dehumidification,         "Dehumidification",            "Dehumidification",            45, ""              },
    {VariationType::PhaseVapor,               "phase_vapor",                 "Vapor Pressure",              1,  ""              },
    {VariationType::PhaseLinked,              "phase_linked",                "Linked Vapor Material",       1,  ""              },
    {VariationType::SinkMicroChannel,         "sink_micro_channel",          "Micro Channel",               1,  ""              },
    {VariationType::PinFinInLine,             "pin_fin_in_line",             "Pin-Fin in Line",             1,  ""              },
    {VariationType::PinFinStaggered,          "pin_fin_staggered",           "Pin-Fin Staggered",           1,  ""              },
    {VariationType::OffsetStrip,              "offset_strip",                "Offset Strip",                1,  ""              },
    {VariationType::SinkProfile,              "sink_profile",                "Heat Sink Profile",           41, ""              },
    {VariationType::SolarWindow,              "solar_window",                "Solar Window",                1,  ""              },
    {VariationType::SolarNone,                "solar_none",                  "None",                        1,  ""              },
    {VariationType::SolarWall,                "solar_wall",                  "Solar Wall",                  1,  ""              },
};

TEST(VariationType, HasTheseRowsInThisOrder)
{
    EXPECT_EQ(std::size(rows), 55u);
    int index = 0;
    for (const auto& [type, name, displayName, code, alias] : rows) {
        EXPECT_EQ(type.index(), index++) << name;
        EXPECT_TRUE(type.isValid()) << name;
        EXPECT_EQ(type.name(), name);
        EXPECT_EQ(type.displayName(), displayName);
        EXPECT_EQ(type.code(), code) << name;
    }
}

TEST(VariationType, HasNoFurtherRows)
{
    int count = 0;
#define VARIATION_TYPE(object, name, displayName, code, alias) ++count;
#include <NereoFileIO/VariationType.def>
    EXPECT_EQ(count, 55);
}

TEST(VariationType, IsFoundByItsNameAndItsOlderName)
{
    for (const auto& [type, name, displayName, code, alias] : rows) {
        EXPECT_EQ(VariationType::fromName(name), type) << name;
        if (*alias != '\0') {
            EXPECT_EQ(VariationType::fromName(alias), type) << alias;
            EXPECT_EQ(VariationType::fromName(alias).name(), name) << alias;
        }
    }
}

TEST(VariationType, IsFoundByItsDisplayName)
{
    for (const auto& [type, name, displayName, code, alias] : rows)
        EXPECT_EQ(VariationType::fromDisplayName(displayName), type) << displayName;
}

TEST(VariationType, IsInvalidForOtherNames)
{
    for (const char* name : {"", "Constants", "CONSTANT", "constant ", " constant", "eos", "Eos", "aeos",
                             "dehumidification", "1st order polymer", "poly", "tec_parm"}) {
        EXPECT_EQ(VariationType::fromName(name).index(), -1) << name;
        EXPECT_EQ(VariationType::fromDisplayName(name).index(), -1) << name;
    }
    EXPECT_FALSE(VariationType::fromName("Constant").isValid());
    EXPECT_FALSE(VariationType::fromName(QString()).isValid());
    EXPECT_FALSE(VariationType::fromDisplayName("constant").isValid());
    EXPECT_FALSE(VariationType::fromDisplayName("EOS").isValid());
    EXPECT_FALSE(VariationType::fromDisplayName("Traces and Planes").isValid()); // that is a property
}

TEST(VariationType, IsTheFirstWithACode)
{
    const struct {
        int code;
        VariationType type;
    } cases[] = {
        {1,  VariationType::Constant                },
        {2,  VariationType::EquationOfState         },
        {3,  VariationType::PowerLaw                },
        {4,  VariationType::Sutherland              },
        {5,  VariationType::Polynomial              },
        {6,  VariationType::InversePolynomial       },
        {7,  VariationType::AdiabaticEquationOfState},
        {8,  VariationType::SameAsKxx               },
        {9,  VariationType::NonnewtPowerLaw         },
        {10, VariationType::Arrhenius               },
        {14, VariationType::SteamTables             },
        {15, VariationType::PiecewiseLinear         },
        {16, VariationType::MoistGas                },
        {17, VariationType::HerschelBuckley         },
        {18, VariationType::Carreau                 },
        {23, VariationType::SecondOrderPolymer      },
        {25, VariationType::FrictionFactor          },
        {26, VariationType::FreeAreaRatio           },
        {27, VariationType::HeadCapacityCurve       },
        {28, VariationType::FirstOrderPolymer       },
        {29, VariationType::TimeTable               },
        {32, VariationType::TableWithAngularPosition},
        {33, VariationType::VelocityProfile         },
        {36, VariationType::PolynomialCoefficients  },
        {37, VariationType::HeatExchanger           },
        {38, VariationType::TemperatureChange       },
        {39, VariationType::HeatInputExtractionRate },
        {40, VariationType::AirConditioner          },
        {41, VariationType::SinkProfile             },
        {42, VariationType::SteamHumidification     },
        {43, VariationType::EnthalpyHumidification  },
        {44, VariationType::AdiabaticHumidification },
        {45, VariationType::Dehumidification        },
    };
    for (const auto& [code, type] : cases)
        EXPECT_EQ(VariationType::fromCode(code), type) << code;
}

TEST(VariationType, ThrowsAtACodeOfNoType)
{
    for (const int code : {-1, 0, 11, 13, 19, 22, 24, 30, 31, 34, 35, 46, 99, 361})
        EXPECT_THAT([code] { VariationType::fromCode(code); },
                    ThrowsMessage<std::runtime_error>("Unrecognized variation type code"))
            << code;
}

TEST(VariationType, IsEmptyWhenInvalid)
{
    const VariationType invalid;
    EXPECT_EQ(invalid.index(), -1);
    EXPECT_FALSE(invalid.isValid());
    EXPECT_EQ(invalid.name(), "");
    EXPECT_EQ(invalid.displayName(), "");
    EXPECT_EQ(invalid.code(), -1);
}

TEST(VariationType, IsComparedByItsIndex)
{
    EXPECT_TRUE(VariationType::Constant == VariationType::fromName("constant"));
    EXPECT_FALSE(VariationType::Constant != VariationType::fromName("constant"));
    EXPECT_TRUE(VariationType::Constant != VariationType::Permeability); // though they share a code
    EXPECT_FALSE(VariationType::Constant == VariationType::Permeability);
    VariationType type;
    type = VariationType::SolarWall;
    const VariationType copy(type);
    EXPECT_EQ(copy.index(), 54);
}

} // namespace
} // namespace Clt
