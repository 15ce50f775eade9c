#include "Arguments.h"
#include "Commands.h"
#include "InputPath.h"
#include "Output.h"
#include "Progress.h"
#include "Terminal.h"
#include "Text.h"

#include <NereoInspection/Check.h>
#include <NereoUtility/StringConversion.h>

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <deque>
#include <unistd.h>

namespace Nereo::Tool {

namespace {

using Inspection::CheckedFile;
using Inspection::Finding;
using Inspection::FindingCounts;
using Inspection::Severity;

const QString cannotOpen = QStringLiteral("cannot-open");

/// Whether a folder means this file: not one of the many others that lie beside it. One that can't be opened
/// may be meant.
bool isMeant(const std::string& path)
{
    return Inspection::kindOfFile(path) != Inspection::FileKind::Unknown
        || !InputPath(path).openError().isEmpty();
}

void addFolder(const QDir& folder, std::deque<InputPath>& inputs)
{
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
        const std::string path = Util::toStdString(folder.filePath(name));
        if (isMeant(path))
            inputs.emplace_back(path);
    }
}

std::deque<InputPath> inputsOf(const std::vector<std::string>& operands)
{
    std::deque<InputPath> inputs;
    for (const std::string& operand : operands) {
        const QFileInfo file(Util::toQString(operand));
        if (file.isDir() && file.isReadable())
            addFolder(QDir(file.filePath()), inputs);
        else
            inputs.emplace_back(operand);
    }
    return inputs;
}

ExitCode exitCodeOf(const CheckedFile& file, bool isStrict)
{
    const auto isUnopened = [](const Finding& finding) { return finding.code == cannotOpen; };
    if (std::any_of(file.findings.begin(), file.findings.end(), isUnopened))
        return Refused;
    const bool isWrong = file.counts.errors > 0 || (isStrict && file.counts.warnings > 0);
    return isWrong ? Found : Success;
}

/// The lines of the findings, as each file has been checked.
class Report {
public:
    explicit Report(Output& output) : output_(output), hasColours_(hasColours(STDOUT_FILENO)) {}

    void add(const CheckedFile& file)
    {
        for (const Finding& finding : file.findings)
            add(file.file, finding);
        if (isUnclean(file.counts))
            output_ << oneLine(Util::toQString(file.file)) << ": " << sum(file.counts) << "\n";
        ++files_;
        counts_ += file.counts;
        if (file.counts.errors > 0)
            broken_.append(oneLine(Util::toQString(file.file)));
    }

    void finish()
    {
        if (files_ > 1 && isUnclean(counts_))
            output_ << counted(files_, "file") << ": " << sum(counts_) << brokenText() << "\n";
    }

private:
    static bool isUnclean(const FindingCounts& counts) { return counts.errors + counts.warnings > 0; }

    static QString sum(const FindingCounts& counts)
    {
        return counted(counts.errors, "error") + QLatin1String(", ") + counted(counts.warnings, "warning");
    }

    void add(const std::string& file, const Finding& finding)
    {
        output_ << coloured(findingLine(file, finding), finding.severity) << "\n";
        if (finding.more > 0)
            output_ << QStringLiteral("%1: %2 more [%3]\n")
                           .arg(oneLine(Util::toQString(file)), QString::number(finding.more), finding.code);
    }

    /// Which files have errors: their lines may have scrolled away.
    QString brokenText() const
    {
        constexpr int mostNamed = 3;
        if (broken_.isEmpty())
            return {};
        const int more = broken_.size() - mostNamed;
        return QLatin1String("; errors in ")
            + QStringList(broken_.mid(0, mostNamed)).join(QLatin1String(", "))
            + (more > 0 ? QStringLiteral(" and %1 more").arg(more) : QString());
    }

    QString coloured(const QString& line, Severity severity) const
    {
        static constexpr const char* colours[] = {"\033[1;31m", "\033[1;35m", "\033[1;36m"};
        if (!hasColours_)
            return line;
        const QString word = severityName(severity) + QLatin1Char(':');
        const QString before = QLatin1String(": ") + word;
        QString changed = line;
        return changed.replace(line.indexOf(before) + 2, word.size(),
                               QLatin1String(colours[int(severity)]) + word + QLatin1String("\033[0m"));
    }

    Output& output_;
    bool hasColours_;
    qint64 files_ = 0;
    FindingCounts counts_;
    QStringList broken_; ///< the files with errors
};

std::vector<CheckedFile> checkedCase(const std::deque<InputPath>& inputs,
                                     const Inspection::CheckOptions& options)
{
    std::vector<std::string> paths;
    paths.reserve(inputs.size());
    for (const InputPath& input : inputs)
        paths.push_back(input.path());
    std::vector<CheckedFile> files = checkCase(paths, options);
    for (std::size_t i = 0; i < files.size(); ++i)
        files[i].file = inputs[i].name();
    return files;
}

CheckedFile checkedFile(const InputPath& input, const Inspection::CheckOptions& options)
{
    Progress progress(Util::toQString(input.name()));
    Inspection::CheckOptions shown = options;
    shown.progress = progress.function();
    CheckedFile file = check(input.path(), shown);
    file.file = input.name();
    return file;
}

} // namespace

ExitCode runCheck(const Arguments& arguments, Output& output)
{
    const Inspection::CheckOptions options {arguments.kind(), {}};
    const bool isJson = arguments.has("json") && !arguments.has("quiet");
    const bool isText = !arguments.has("json") && !arguments.has("quiet");
    Report report(output);
    std::vector<CheckedFile> all; // for the document
    ExitCode worst = Success;
    const auto take = [&](CheckedFile file) {
        worst = worse(worst, exitCodeOf(file, arguments.has("strict")));
        if (isText)
            report.add(file);
        if (isJson)
            all.push_back(std::move(file));
    };

    const std::deque<InputPath> inputs = inputsOf(arguments.operands());
    if (arguments.has("case")) {
        for (CheckedFile& file : checkedCase(inputs, options))
            take(std::move(file));
    } else {
        for (const InputPath& input : inputs)
            take(checkedFile(input, options));
    }
    report.finish();
    if (isJson)
        output << QString::fromUtf8(toJson(all));
    return worst;
}

} // namespace Nereo::Tool
