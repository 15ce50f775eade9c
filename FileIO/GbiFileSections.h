#pragma once

/// The lines of a geometry and boundary file that its values stand in, for the writer and whoever else looks
/// at such files: the sections in the order in which they are written, and the words.

namespace Nereo::Io {

inline constexpr char gbiVersionWord[] = "Version"; ///< in the third line; the version follows
inline constexpr char gbiTitleStart[] = "*** ";     ///< of the line that begins a section; the name follows
inline constexpr char gbiListEnd[] = "-1";          ///< a line of its own behind the last of a list

enum class GbiContent {
    Fixed, ///< the same in every file that is written here
    CoordinateSystem,
    Materials,
    Units,
    SurfaceConditions
};

struct GbiSection {
    const char* name;
    GbiContent content;
    const char* lines; ///< those that are fixed
};

inline constexpr GbiSection gbiSections[] = {
    {"Summary",                            GbiContent::Fixed,             ""           },
    {"Coordinate System",                  GbiContent::CoordinateSystem,  ""           },
    {"Properties",                         GbiContent::Materials,         ""           },
    {"Units",                              GbiContent::Units,             ""           },
    {"Extruded Parts Summary",             GbiContent::Fixed,             "0\n"        },
    {"Nodes",                              GbiContent::Fixed,             ""           },
    {"Elements",                           GbiContent::Fixed,             ""           },
    {"Shell Elements",                     GbiContent::Fixed,             ""           },
    {"Shell Surface Node Links",           GbiContent::Fixed,             ""           },
    {"3D Shells Data",                     GbiContent::Fixed,             ""           },
    {"Part Surfaces",                      GbiContent::Fixed,             ""           },
    {"Surface Connectivity Data",          GbiContent::Fixed,             ""           },
    {"Extrusion Nodal Data",               GbiContent::Fixed,             ""           },
    {"Extrusion Face List",                GbiContent::Fixed,             ""           },
    {"Periodic Nodal Data",                GbiContent::Fixed,             ""           },
    {"Periodic Face List",                 GbiContent::Fixed,             ""           },
    {"Periodic Transform",                 GbiContent::Fixed,             ""           },
    {"Rotating Region Data",               GbiContent::Fixed,             ""           },
    {"Moving Region Data",                 GbiContent::Fixed,             ""           },
    {"Fan Thermostats",                    GbiContent::Fixed,             "-1 kP 0.0\n"},
    {"PCB Regions",                        GbiContent::Fixed,             "-1 kP 0.0\n"},
    {"Heat Sink Model Info",               GbiContent::Fixed,             "-1 kP 0.0\n"},
    {"Surface nodal boundary conditions",  GbiContent::SurfaceConditions, ""           },
    {"Spatial nodal boundary conditions",  GbiContent::Fixed,             "-1\n"       },
    {"Region element boundary conditions", GbiContent::Fixed,             "-1\n"       },
    {"Region initial conditions",          GbiContent::Fixed,             "-1\n"       },
    {"Surface initial conditions",         GbiContent::Fixed,             "-1\n"       },
};

// In the order of the enumerators of GbiFile.
inline constexpr const char* coordinateSystemWords[] = {"", "XY", "XR", "RY", "RT", "ZY", "XZ", "XYZ", "RTZ"};
inline constexpr const char* unitsWords[] = {"meter", "cm", "mm", "feet", "inch", "inch-WATT"};

} // namespace Nereo::Io
