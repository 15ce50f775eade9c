#include <NereoInspection/Outline.h>

#include "Walker.h"

namespace Nereo::Inspection {

bool outline(const std::string& path, FileKind kind, const ItemVisitor& visit)
{
    const Walk walk = walkOf(kind);
    const InputFile file(path);
    if (walk == nullptr || !file.isOpen())
        return false;
    ItemListener listener(visit);
    walk(file, listener);
    return true;
}

bool outline(const std::string& path, const ItemVisitor& visit)
{
    return outline(path, kindOfFile(path), visit);
}

QString addressPart(const QString& name)
{
    QString part = name;
    part.replace(QLatin1Char('%'),
                 QLatin1String("%25")); // first, so that none of the others is written twice
    part.replace(QLatin1Char('/'), QLatin1String("%2F"));
    part.replace(QLatin1Char('#'), QLatin1String("%23"));
    return part;
}

} // namespace Nereo::Inspection
