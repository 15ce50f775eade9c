#include "VariableNames.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>

namespace Nereo::Inspection {

const QStringList& variableNames()
{
    static const QStringList names = [] {
        QStringList all {
#define FIELD_VARIABLE(name, code) QStringLiteral(#name),
#include <NereoFileIO/FieldVariable.def>
        };
        all.removeLast(); // kNone
        for (int code = 1; code < Io::kNone; ++code) {
            const QString name = Io::CodeNameTable::instance().nameForCode(code, false);
            if (name != all[code - 1])
                all.append(name);
        }
        return all;
    }();
    return names;
}

const QStringList& nodeFlagNames()
{
    static const QStringList names {
#define NODE_FLAG(name, code) QStringLiteral(#name),
#include <NereoFileIO/NodeFlag.def>
    };
    return names;
}

const QStringList& variableAndFlagNames()
{
    static const QStringList names = variableNames() + nodeFlagNames();
    return names;
}

} // namespace Nereo::Inspection
