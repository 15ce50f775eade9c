#include "Commands.h"

#include <algorithm>

namespace Nereo::Tool {

namespace {

constexpr Option json {"json", nullptr, "one JSON document"};
constexpr Option kind {"kind", "KIND", "take the files for this kind, whatever their content tells"};

constexpr Option infoOptions[] = {
    json,
    {"stats", nullptr, "minimum, maximum and mean of each field of results, with the nodes of the extremes"},
    kind,
};

constexpr Option checkOptions[] = {
    json,
    {"strict", nullptr, "warnings count as errors in the exit code"                    },
    {"quiet",  nullptr, "the exit code only"                                           },
    {"case",   nullptr, "the files belong together: say also what differs between them"},
    kind,
};

constexpr Option diffOptions[] = {
    json,
    {"quiet",    nullptr,    "the exit code only"                                             },
    {"absolute", "X",        "numbers that differ by no more than this are the same"          },
    {"relative", "X",        "likewise, as a share of the larger one"                         },
    {"peak",     "X",        "likewise, as a share of the largest magnitude of the field in A"},
    {"fields",   "NAME,...", "of results only these fields"                                   },
};

constexpr Option getOptions[] = {
    json,
    kind,
    {"effective", nullptr, "all settings as the solver has them, with where they come from"},
};

constexpr Option editOptions[] = {
    {"output",  "FILE",  "write the changed file there, and leave the old one as it is"     },
    {"dry-run", nullptr, "write nothing, and show what would change as a unified difference"},
};

constexpr Option convertOptions[] = {
    {"fields", "NAME,...",   "only these fields of results, in this order"       },
    {"nodes",  "FIRST:LAST", "only these nodes of results, both of them included"},
    {"force",  nullptr,      "convert a file with errors"                        },
};

constexpr Option codesOptions[] = {
    json,
};

// A command is a column of texts.
// clang-format off
constexpr Command table[] = {
    {"info",
     {"FILE...", 1, Operands::any},
     "show what files are and what they say",
     infoOptions,
     "Shows the kind of a file and its facts, the most important first. Of results the values aren't read, "
     "unless --stats asks for what they are like. A FILE of - is standard input.",
     "nereofile info cavity.res --stats",
     runInfo},
    {"check",
     {"FILE...", 1, Operands::any},
     "report what is wrong in files",
     checkOptions,
     "Prints a line for each thing that is wrong, with its place, a code, and the address of the value; then "
     "a line for each file that isn't clean, and one that says in which of several there are errors. A folder means "
     "the files in it. A FILE of - is standard input.",
     "nereofile check run --case",
     runCheck},
    {"diff",
     {"A B", 2, 2},
     "compare what two files say",
     diffOptions,
     "Compares value by value what the files say; layout, order and comments don't matter. Prints a line for "
     "each difference: \"ADDRESS: A -> B\", \"+ ADDRESS: B\" for what only B has, \"- ADDRESS: A\" for what "
     "only A has; of the fields of results how many values differ and by how much, the worst field first. "
     "Where several tolerances are given, values differ that exceed all of them.",
     "nereofile diff last-week.res cavity.res --peak 1e-6",
     runDiff},
    {"get",
     {"FILE [ADDRESS...]", 1, Operands::any},
     "print values by their addresses",
     getOptions,
     "Prints the value at one address, or ADDRESS=VALUE lines for several; all values of the file where no "
     "address is given. A FILE of - is standard input.\n"
     "With --effective, every setting of a configuration as the solver would have it, and whether it comes "
     "from the file, the defaults or the command line, which may stand behind --: the prefix of the job, "
     "and pairs such as -MaxIter 500.",
     "nereofile get cavity.ctl relaxation/kP/under\n"
     "nereofile get cavity.xml --effective -- cavity -MaxIter 500",
     runGet,
     "[-- SOLVER ARGUMENTS...]",
     "effective"},
    {"set",
     {"FILE ADDRESS VALUE [ADDRESS VALUE]...", 3, Operands::any, 2},
     "change values, and no other byte",
     editOptions,
     "Changes the values of a configuration, a control file or a material database: all of them or, where "
     "one is refused, none. Everything else in the file stays as it is, byte by byte. What the file lacks is "
     "added: settings, constants, flags, elements of a material. At every moment the file is the old one or "
     "the new one. A FILE of - for --output is standard output.",
     "nereofile set cavity.ctl relaxation/kP/under 0.25",
     runSet},
    {"unset",
     {"FILE ADDRESS...", 2, Operands::any},
     "remove settings, constants and flags",
     editOptions,
     "Removes settings of a configuration, or constants and flags of a control file: all of them or, where "
     "one isn't there, none. Everything else in the file stays as it is.",
     "nereofile unset cavity.ctl flags/restart_every --dry-run",
     runUnset},
    {"convert",
     {"IN OUT", 2, 2},
     "write a configuration in its other form, or results as a table",
     convertOptions,
     "The suffix of OUT says what is written: a configuration becomes XML for .xml and text for any other; "
     "results become a table with a row for each node for .csv, and an array of NumPy for .npy. An OUT of - "
     "is text or CSV on standard output. Fields whose code isn't known are left out. A file in which check "
     "finds errors is converted only with --force.",
     "nereofile convert cavity.res cavity.csv --fields kU,kV",
     runConvert},
    {"codes",
     {"[NAME|CODE|PATTERN]", 0, 1},
     "list field variables and node flags",
     codesOptions,
     "Lists codes and names, all of them or those that match. In a pattern * stands for any letters and ? "
     "for one; upper and lower case are the same. Quote patterns, so that the shell leaves them alone.",
     "nereofile codes 'k*Pres*'",
     runCodes},
};
// clang-format on

} // namespace

const Command* CommandTable::begin() const
{
    return std::begin(table);
}

const Command* CommandTable::end() const
{
    return std::end(table);
}

const Command* CommandTable::find(std::string_view name) const
{
    const Command* const found =
        std::find_if(begin(), end(), [name](const Command& command) { return command.name == name; });
    return found == end() ? nullptr : found;
}

} // namespace Nereo::Tool
