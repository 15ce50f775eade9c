#pragma once

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>

#include <QString>

namespace Nereo::Inspection {

/// Whether a name is that of a flag of nodes. A load takes it for the variable that has the same code.
inline bool isNodeFlag(const QString& name)
{
    const Io::CodeNameTable& table = Io::CodeNameTable::instance();
    const int code = table.codeForName(name);
    return code != Io::kNone && name == table.nameForCode(code, true)
        && name != table.nameForCode(code, false);
}

} // namespace Nereo::Inspection
