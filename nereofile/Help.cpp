#include "Help.h"

#include "Commands.h"
#include "Text.h"

#include <algorithm>

namespace Nereo::Tool {

namespace {

constexpr int widest = 100; // lines that are longer are hard to read
constexpr int indentation = 2;

QString optionText(const Option& option)
{
    const QString name = QLatin1String("--") + QLatin1String(option.name);
    return option.value == nullptr ? name : name + QLatin1Char(' ') + QLatin1String(option.value);
}

struct Row {
    QString left;
    QString right;
};

/// Rows of a name and what it means, which goes on below itself.
QString listing(const std::vector<Row>& rows, int columns)
{
    int width = 0;
    for (const Row& row : rows)
        width = std::max(width, letterCount(row.left));
    const int indentedBy = indentation + width + indentation;
    QString text;
    for (const Row& row : rows) {
        text += QString(indentation, QLatin1Char(' ')) + filledUp(row.left, width + indentation)
            + wrapped(row.right, columns, indentedBy) + QLatin1Char('\n');
    }
    return text;
}

QString usage(const Command& command, int columns)
{
    const QString start = QStringLiteral("Usage: nereofile %1 ").arg(QLatin1String(command.name));
    QString rest = QLatin1String(command.operands.usage);
    for (const Option& option : command.options)
        rest += QStringLiteral(" [%1]").arg(optionText(option).replace(QLatin1Char(' '), QChar::Nbsp));
    if (command.trailing != nullptr)
        rest += QLatin1Char(' ') + QLatin1String(command.trailing);
    return start + wrapped(rest, columns, start.size()).replace(QChar::Nbsp, QLatin1Char(' '))
        + QLatin1Char('\n');
}

QString heading(const char* words)
{
    return QLatin1Char('\n') + QLatin1String(words) + QLatin1String(":\n");
}

QString examplesText(const char* examples)
{
    QString text;
    for (const QString& line : QString::fromLatin1(examples).split(QLatin1Char('\n')))
        text += QString(indentation, QLatin1Char(' ')) + line + QLatin1Char('\n');
    return text;
}

} // namespace

QString programHelp(int columns)
{
    const int width = std::min(columns, widest);
    std::vector<Row> rows;
    for (const Command& command : commands)
        rows.push_back({QLatin1String(command.name), QLatin1String(command.summary)});
    QString text = QStringLiteral("Usage: nereofile COMMAND ...\n\n");
    text += wrapped(
        QStringLiteral("Shows, checks, compares, changes and converts the files that a flow solver and "
                       "its front end exchange: configuration, control file, material database, "
                       "geometry and boundary file, results."),
        width);
    text += QLatin1Char('\n') + heading("Commands") + listing(rows, width);
    text += heading("Options")
        + listing(
                {
                    {QStringLiteral("--help"),
                     QStringLiteral("show this text; COMMAND --help shows more of a command")},
                    {QStringLiteral("--version"), QStringLiteral("show the version")         }
    },
                width);
    text +=
        heading("Exit code")
        + listing(
            {
                {QStringLiteral("0"), QStringLiteral("done, and nothing is wrong, different or missing")},
                {QStringLiteral("1"),
                 QStringLiteral("an error was found, a difference, or an address isn't there")          },
                {QStringLiteral("2"),
                 QStringLiteral("wrong usage, a file that can't be read or written, a value that is refused; "
                                "cancelled")                                                            }
    },
            width);
    text += heading("Examples");
    for (const Command& command : commands)
        text += examplesText(command.examples);
    return text;
}

QString commandHelp(const Command& command, int columns)
{
    const int width = std::min(columns, widest);
    std::vector<Row> rows;
    for (const Option& option : command.options)
        rows.push_back({optionText(option), QLatin1String(option.help)});
    rows.push_back({optionText(helpOption), QLatin1String(helpOption.help)});
    QString text = usage(command, width) + QLatin1Char('\n');
    for (const QString& paragraph : QString::fromLatin1(command.details).split(QLatin1Char('\n')))
        text += wrapped(paragraph, width) + QLatin1Char('\n');
    return text + heading("Options") + listing(rows, width) + heading("Examples")
        + examplesText(command.examples);
}

} // namespace Nereo::Tool
