#include <NereoFileIO/CodeNameTable.h>

#include "Assertion.h"

#include <cstddef>
#include <iterator>

namespace Nereo::Io {

namespace {

struct CodeName {
    int code;
    const char* name;
};

constexpr CodeName fieldVariables[] = {
#define FIELD_VARIABLE(name, code) {code, #name},
#include <NereoFileIO/FieldVariable.def>
};

constexpr CodeName nodeFlags[] = {
#define NODE_FLAG(name, code) {code, #name},
#include <NereoFileIO/NodeFlag.def>
};

constexpr CodeName conductivityAliases[] = {
    {kCond, "kKXX"},
    {kGen,  "kKYY"},
    {kMixF, "kKZZ"},
};

template <std::size_t size>
constexpr bool runWithoutGap(const CodeName (&rows)[size])
{
    int expected = 1;
    for (const CodeName& row : rows) {
        if (row.code != expected++)
            return false;
    }
    return true;
}

template <std::size_t size>
constexpr bool codesDiffer(const CodeName (&rows)[size])
{
    for (std::size_t i = 0; i < size; ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (rows[i].code == rows[j].code)
                return false;
        }
    }
    return true;
}

// A name can't stand twice: the names of both tables are enumerators of one namespace.
static_assert(runWithoutGap(fieldVariables) && std::size(fieldVariables) == kNone);
static_assert(codesDiffer(nodeFlags) && codesDiffer(conductivityAliases));

template <std::size_t size>
QMap<QString, int> codesByName(const CodeName (&rows)[size])
{
    QMap<QString, int> codes;
    for (const auto& [code, name] : rows)
        codes.insert(QLatin1String(name), code);
    return codes;
}

QMap<int, QString> namesByCode(const QMap<QString, int>& codes)
{
    QMap<int, QString> names;
    for (auto entry = codes.begin(); entry != codes.end(); ++entry)
        names.insert(entry.value(), entry.key());
    return names;
}

QVector<QString> namesAtCodes(const QMap<QString, int>& codes)
{
    QVector<QString> names(codes.size() + 1);
    for (auto entry = codes.begin(); entry != codes.end(); ++entry)
        names[entry.value()] = entry.key();
    return names;
}

} // namespace

CodeNameTable::CodeNameTable()
    : fieldVariableCodes_(codesByName(fieldVariables)),
      fieldVariableNames_(namesAtCodes(fieldVariableCodes_)), flagCodes_(codesByName(nodeFlags)),
      flagNames_(namesByCode(flagCodes_)), aliasCodes_(codesByName(conductivityAliases)),
      aliasNames_(namesByCode(aliasCodes_))
{
}

const CodeNameTable& CodeNameTable::instance()
{
    static const CodeNameTable& table = *new CodeNameTable;
    return table;
}

int CodeNameTable::codeForName(const QString& name) const
{
    for (const auto* codes : {&aliasCodes_, &fieldVariableCodes_, &flagCodes_}) {
        const auto found = codes->constFind(name);
        if (found != codes->constEnd())
            return *found;
    }
    return kNone;
}

QString CodeNameTable::nameForCode(int code, bool preferFlagName) const
{
    const auto alias = aliasNames_.constFind(code);
    if (alias != aliasNames_.constEnd())
        return *alias;
    if (preferFlagName) {
        const auto flag = flagNames_.constFind(code);
        if (flag != flagNames_.constEnd())
            return *flag;
    }
    NEREO_ASSERT_INDEX(code, fieldVariableNames_.size(), "QVector<T>::at", "FileIO/CodeNameTable");
    return fieldVariableNames_.at(code);
}

} // namespace Nereo::Io
