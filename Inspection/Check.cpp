#include <NereoInspection/Check.h>

#include "FileCheck.h"
#include "Walker.h"

namespace Nereo::Inspection {

namespace {

void walk(const InputFile& file, FileKind kind, Listener& listener)
{
    const QString error = kind == FileKind::Unknown ? file.readError() : QString();
    if (!error.isEmpty())
        listener.finding({Rule::CannotRead, {}, {}, error});
    else if (kind == FileKind::Unknown)
        listener.finding({Rule::UnknownKind, {}});
    else if (const Walk walkIt = walkOf(kind))
        walkIt(file, listener);
}

FindingCounts countsOf(const std::vector<Finding>& findings)
{
    FindingCounts counts;
    for (const Finding& finding : findings) {
        qint64& count = finding.severity == Severity::Error ? counts.errors
            : finding.severity == Severity::Warning         ? counts.warnings
                                                            : counts.notes;
        count += 1 + finding.more;
    }
    return counts;
}

} // namespace

FindingCounts& FindingCounts::operator+=(const FindingCounts& other)
{
    errors += other.errors;
    warnings += other.warnings;
    notes += other.notes;
    return *this;
}

CheckedFile checkFile(const InputFile& file, const CheckOptions& options)
{
    CheckedFile checked;
    checked.file = file.path();
    checked.kind = options.kind;

    file.setProgress(options.progress);
    FindingListener listener;
    if (!file.isOpen()) {
        listener.finding({Rule::CannotOpen, {}, {}, file.errorString()});
    } else {
        if (checked.kind == FileKind::Unknown)
            checked.kind = kindOf(file);
        walk(file, checked.kind, listener);
    }
    checked.findings = listener.takeFindings();
    checked.counts = countsOf(checked.findings);
    return checked;
}

void addFindings(CheckedFile& checked, FindingListener& listener)
{
    const std::vector<Finding> findings = listener.takeFindings();
    checked.findings.insert(checked.findings.end(), findings.begin(), findings.end());
    sortByPlace(checked.findings);
    checked.counts += countsOf(findings);
}

CheckedFile check(const std::string& path, const CheckOptions& options)
{
    return checkFile(InputFile(path), options);
}

std::vector<CheckedFile> check(const std::vector<std::string>& paths, const CheckOptions& options)
{
    std::vector<CheckedFile> files;
    files.reserve(paths.size());
    for (const std::string& path : paths)
        files.push_back(check(path, options));
    return files;
}

} // namespace Nereo::Inspection
