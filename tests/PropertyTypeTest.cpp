#include "support/Assertions.h"

#include <NereoFileIO/PropertyType.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <type_traits>

namespace Clt {
namespace {

const struct {
    PropertyType type;
    const char* name;
    const char* displayName;
    int unitCategory;
    int code;
} rows[] = {
  // constant, name in files, name on screen, unit category, field-variable code; the index is the place
  // here
    {PropertyType::Density,                   "density",                     "Density",                     16, 25 },
    {PropertyType::Viscosity,                 "viscosity",                   "Viscosity",                   17, 26 },
    {PropertyType::Conductivity,              "conductivity",                "Conductivity",                18, 27 },
    {PropertyType::SpecificHeat,              "specific_heat",               "Specific heat",               20, 28 },
    {PropertyType::SurfaceTension,            "surface_tension",             "Surface tension",             24, 29 },
    {PropertyType::RatioSpecificHeats,        "ratio_specific_heats",        "Cp/Cv",                       -1, 250},
    {PropertyType::XConductivity,             "x_conductivity",              "X-Direction",                 18, 27 },
    {PropertyType::YConductivity,             "y_conductivity",              "Y-Direction",                 18, 47 },
    {PropertyType::ZConductivity,             "z_conductivity",              "Z-Direction",                 18, 48 },
    {PropertyType::BulkModulus,               "bulk_modulus",                "Bulk modulus",                1,  361},
    {PropertyType::Emissivity,                "emissivity",                  "Emissivity",                  -1, 30 },
    {PropertyType::Transmissivity,            "transmissivity",              "Transmissivity",              -1, 31 },
    {PropertyType::Roughness,                 "roughness",                   "Wall roughness",              23, 35 },
    {PropertyType::FlowRate,                  "flow_rate",                   "Flow",                        9,  361},
    {PropertyType::RotationalVelocity,        "rotational_velocity",         "Rotational speed",            26, 361},
    {PropertyType::ThroughFlowK,              "through_flow_k",              "Through-Flow K",              -1, 361},
    {PropertyType::NormalDir1K,               "normal_dir_1_k",              "Normal direction 1 K",        -1, 361},
    {PropertyType::NormalDir2K,               "normal_dir_2_k",              "Normal direction 2 K",        -1, 361},
    {PropertyType::FullOpenK,                 "full_open_k",                 "Full open K factor",          -1, 361},
    {PropertyType::CutoffFlowRate,            "cutoff_flow_rate",            "Cutoff flow rate",            9,  361},
    {PropertyType::Torque,                    "torque",                      "Driving torque",              29, 361},
    {PropertyType::Inertia,                   "inertia",                     "Inertia",                     30, 361},
    {PropertyType::Distance,                  "distance",                    "Distance",                    23, 361},
    {PropertyType::Resistivity,               "resistivity",                 "Electrical resistivity",      34, 34 },
    {PropertyType::Seebeck,                   "seebeck",                     "Seebeck coefficient",         40, 361},
    {PropertyType::ThermalResistivity,        "thermal_resistivity",         "Resistivity",                 37, 361},
    {PropertyType::SlipFactor,                "slip_factor",                 "Slip factor",                 -1, 361},
    {PropertyType::Compressibility,           "compressibility",             "Compressibility",             -1, 361},
    {PropertyType::InitialVelocity,           "initial_velocity",            "Initial velocity",            0,  361},
    {PropertyType::DrivingForce,              "driving_force",               "Driving force",               11, 361},
    {PropertyType::ResistiveForce,            "resistive_force",             "Resistive force",             11, 361},
    {PropertyType::StictionAtMin,             "stiction_at_min",             "Stiction at min",             11, 361},
    {PropertyType::StictionAtMax,             "stiction_at_max",             "Stiction at max",             11, 361},
    {PropertyType::CoefOfRest,                "coef_of_rest",                "Coeff. of rest",              -1, 361},
    {PropertyType::Angle,                     "angle",                       "Angle",                       38, 361},
    {PropertyType::InitialAngularVelocity,    "initial_angular_velocity",    "Initial angular velocity",    26, 361},
    {PropertyType::DrivingTorque,             "driving_torque",              "Driving torque",              29, 361},
    {PropertyType::ResistiveTorque,           "resistive_torque",            "Resistive torque",            29, 361},
    {PropertyType::OrbitalAngle,              "orbital_angle",               "Orbital angle",               38, 361},
    {PropertyType::RotationalAngle,           "rotational_angle",            "Rotational angle",            38, 361},
    {PropertyType::InitialOrbitalVelocity,    "initial_orbital_velocity",    "Initial orbital velocity",    26, 361},
    {PropertyType::DrivingOrbitalTorque,      "driving_orbital_torque",      "Driving orbital torque",      29, 361},
    {PropertyType::ResistiveOrbitalTorque,    "resistive_orbital_torque",    "Resistive orbital torque",    29, 361},
    {PropertyType::InitialRotationalVelocity, "initial_rotational_velocity", "Initial rotational velocity",
     26,                                                                                                        361},
    {PropertyType::DrivingRotationalTorque,   "driving_rotational_torque",   "Driving rotational torque",   29,
     361                                                                                                           },
    {PropertyType::ResistiveRotationalTorque, "resistive_rotational_torque", "Resistive rotational torque",
     29,                                                                                                        361},
    {PropertyType::NutationAngle,             "nutation_angle",              "Nutation angle",              38, 361},
    {PropertyType::InitialNutationVelocity,   "initial_nutation_velocity",   "Initial nutation velocity",   26,
     361                                                                                                           },
    {PropertyType::InitialXVel,               "initial_xVel",                "Initial X velocity",          0,  361},
    {PropertyType::InitialYVel,               "initial_yVel",                "Initial Y velocity",          0,  361},
    {PropertyType::InitialZVel,               "initial_zVel",                "Initial Z velocity",          0,  361},
    {PropertyType::InitialXRot,               "initial_xRot",                "Initial X angular velocity",  38, 361},
    {PropertyType::InitialYRot,               "initial_yRot",                "Initial Y angular velocity",  38, 361},
    {PropertyType::InitialZRot,               "initial_zRot",                "Initial Z angular velocity",  38, 361},
    {PropertyType::ThetaJB,                   "theta_JB",                    "Theta JB",                    39, 361},
    {PropertyType::ThetaJC,                   "theta_JC",                    "Theta JC",                    39, 361},
    {PropertyType::TotalPcbThickness,         "total_pcb_thickness",         "Total PCB thickness",         23, 361},
    {PropertyType::TracesAndPlanes,           "traces_and_planes",           "Traces and Planes",           -1, 361},
    {PropertyType::PcbDielectric,             "pcb_dielectric",              "Dielectric",                  -1, 361},
    {PropertyType::TecSizeSpec,               "tec_size_spec",               "TEC geometry",                -1, 361},
    {PropertyType::TecControlSpec,            "tec_control_spec",            "Control method",              -1, 361},
    {PropertyType::TecParmSpec,               "tec_parm_spec",               "TEC parameter limits",        -1, 361},
    {PropertyType::Resistance,                "resistance",                  "Resistance",                  39, 361},
    {PropertyType::HeatTransfer,              "heat_transfer",               "Heat Transfer",               -1, 361},
    {PropertyType::Phase,                     "phase",                       "Phase",                       1,  361},
    {PropertyType::BaseConductivity,          "base_conductivity",           "Base conductivity",           18, 361},
    {PropertyType::SinkConductivity,          "sink_conductivity",           "Fin conductivity",            18, 361},
    {PropertyType::BaseThickness,             "base_thickness",              "Base thickness",              23, 361},
    {PropertyType::HeatSinkType,              "heat_sink_type",              "Type",                        -1, 361},
    {PropertyType::Solar,                     "solar",                       "Solar",                       -1, 361},
};

TEST(PropertyType, HasTheseRowsInThisOrder)
{
    EXPECT_EQ(std::size(rows), 70u);
    int index = 0;
    for (const auto& [type, name, displayName, unitCategory, code] : rows) {
        EXPECT_EQ(type.index(), index++) << name;
        EXPECT_TRUE(type.isValid()) << name;
        EXPECT_EQ(type.name(), name);
        EXPECT_EQ(type.displayName(), displayName);
        EXPECT_EQ(type.unitCategory(), unitCategory) << name;
        EXPECT_EQ(type.code(), code) << name;
    }
}

TEST(PropertyType, HasNoFurtherRows)
{
    int count = 0;
#define PROPERTY_TYPE(object, name, displayName, unitCategory, code) ++count;
#include <NereoFileIO/PropertyType.def>
    EXPECT_EQ(count, 70);
}

TEST(PropertyType, IsFoundByItsName)
{
    for (const auto& [type, name, displayName, unitCategory, code] : rows)
        EXPECT_EQ(PropertyType::fromName(name), type) << name;
}

TEST(PropertyType, IsFoundByItsDisplayName)
{
    for (const auto& [type, name, displayName, unitCategory, code] : rows) {
        if (type != PropertyType::DrivingTorque) {
            EXPECT_EQ(PropertyType::fromDisplayName(displayName), type) << displayName;
        }
    }
}

TEST(PropertyType, IsTheFirstWithADisplayName)
{
    EXPECT_EQ(PropertyType::Torque.displayName(), PropertyType::DrivingTorque.displayName());
    EXPECT_EQ(PropertyType::fromDisplayName("Driving torque"), PropertyType::Torque);
}

TEST(PropertyType, IsTheFirstWithACode)
{
    const struct {
        int code;
        PropertyType type;
    } cases[] = {
        {25,  PropertyType::Density           },
        {26,  PropertyType::Viscosity         },
        {27,  PropertyType::Conductivity      }, // not XConductivity
        {28,  PropertyType::SpecificHeat      },
        {29,  PropertyType::SurfaceTension    },
        {30,  PropertyType::Emissivity        },
        {31,  PropertyType::Transmissivity    },
        {34,  PropertyType::Resistivity       },
        {35,  PropertyType::Roughness         },
        {47,  PropertyType::YConductivity     },
        {48,  PropertyType::ZConductivity     },
        {250, PropertyType::RatioSpecificHeats},
        {361, PropertyType::BulkModulus       }, // and 56 others
    };
    for (const auto& [code, type] : cases)
        EXPECT_EQ(PropertyType::fromCode(code), type) << code;
    for (const int code : {-1, 0, 1, 24, 32, 249, 360, 362})
        EXPECT_EQ(PropertyType::fromCode(code), PropertyType()) << code;
    EXPECT_EQ(
        std::count_if(std::begin(rows), std::end(rows), [](const auto& row) { return row.code == 361; }), 57);
}

TEST(PropertyType, IsInvalidForOtherNames)
{
    for (const char* name :
         {"", "Dens", "DENSITY", "density ", " density", "initial_xvel", "theta_jb", "specific heat"}) {
        EXPECT_EQ(PropertyType::fromName(name).index(), -1) << name;
        EXPECT_EQ(PropertyType::fromDisplayName(name).index(), -1) << name;
    }
    EXPECT_FALSE(PropertyType::fromName("Density").isValid());
    EXPECT_FALSE(PropertyType::fromName(QString()).isValid());
    EXPECT_FALSE(PropertyType::fromDisplayName("density").isValid());
    EXPECT_FALSE(PropertyType::fromDisplayName("Specific Heat").isValid());
}

TEST(PropertyType, IsComparedByItsIndex)
{
    EXPECT_TRUE(PropertyType::Density == PropertyType::fromCode(25));
    EXPECT_FALSE(PropertyType::Density != PropertyType::fromCode(25));
    EXPECT_TRUE(PropertyType::Conductivity != PropertyType::XConductivity); // though they share a code
    EXPECT_FALSE(PropertyType::Conductivity == PropertyType::XConductivity);
    PropertyType type;
    EXPECT_EQ(type.index(), -1);
    EXPECT_FALSE(type.isValid());
    type = PropertyType::Solar;
    const PropertyType copy(type);
    EXPECT_EQ(copy.index(), 69);
}

TEST(PropertyTypeDeathTest, StopsWhenAskedAboutTheInvalidValue)
{
    const PropertyType invalid;
    EXPECT_INDEX_ASSERTION(invalid.name(), "QVector<T>::operator[]", "FileIO/PropertyType");
    EXPECT_INDEX_ASSERTION(invalid.displayName(), "QVector<T>::operator[]", "FileIO/PropertyType");
    EXPECT_INDEX_ASSERTION(invalid.code(), "QVector<T>::operator[]", "FileIO/PropertyType");
    EXPECT_INDEX_ASSERTION(invalid.unitCategory(), "QVector<T>::operator[]", "FileIO/PropertyType");
}

} // namespace
} // namespace Clt
