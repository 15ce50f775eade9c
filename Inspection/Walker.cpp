#include "Walker.h"

namespace Nereo::Inspection {

namespace {

struct Walker {
    FileKind kind;
    Walk walk;
};

constexpr Walker walkers[] = {
    {FileKind::ConfigurationXml,  walkConfigurationXml },
    {FileKind::ConfigurationText, walkConfigurationText},
    {FileKind::Materials,         walkMaterialDatabase },
    {FileKind::GeometryBoundary,  walkGeometryBoundary },
    {FileKind::Control,           walkControlFile      },
    {FileKind::Results,           walkResults          },
};

} // namespace

Walk walkOf(FileKind kind)
{
    for (const Walker& walker : walkers) {
        if (walker.kind == kind)
            return walker.walk;
    }
    return nullptr;
}

} // namespace Nereo::Inspection
