#include <NereoInspection/Comparison.h>

#include "InputFile.h"
#include "ResultsComparison.h"
#include "ValueComparison.h"
#include "Walker.h"

#include <FileIO/ResultsProgressMeter.h>
#include <algorithm>
#include <cstring>
#include <memory>

namespace Nereo::Inspection {

namespace {

using Outcome = Comparison::Outcome;

bool isConfiguration(FileKind kind)
{
    return kind == FileKind::ConfigurationXml || kind == FileKind::ConfigurationText;
}

bool areComparable(FileKind a, FileKind b)
{
    return a == b || (isConfiguration(a) && isConfiguration(b));
}

/// Whether the files are the same byte by byte, and so in every value. Files that aren't most often show it
/// early.
bool haveSameBytes(const InputFile& a, const InputFile& b)
{
    constexpr qint64 blockSize = 128 * 1024;
    if (a.size() != b.size())
        return false;
    const std::unique_ptr<QIODevice> deviceOfA = a.openBytes();
    const std::unique_ptr<QIODevice> deviceOfB = b.openBytes();
    QByteArray block(blockSize, Qt::Uninitialized);
    QByteArray other(blockSize, Qt::Uninitialized);
    for (qint64 left = a.size(); left > 0; left -= blockSize) {
        const qint64 wanted = std::min(left, blockSize);
        if (deviceOfA->read(block.data(), wanted) != wanted || deviceOfB->read(other.data(), wanted) != wanted
            || std::memcmp(block.constData(), other.constData(), std::size_t(wanted)) != 0)
            return false;
    }
    return true;
}

/// The way through two files.
class FileComparison {
public:
    FileComparison(const std::string& pathOfA, const std::string& pathOfB, const ComparisonOptions& options)
        : a_(pathOfA), b_(pathOfB), options_(options), meter_(options.progress)
    {
    }

    Comparison run()
    {
        const bool isCompared = findKind(a_, comparison_.kindOfA) && findKind(b_, comparison_.kindOfB)
            && checkKinds() && compareFiles();
        if (isCompared)
            meter_.finish();
        if (meter_.isCancelled())
            end(Outcome::Cancelled, {}, QStringLiteral("the comparison was cancelled"));
        if (comparison_.outcome != Outcome::Compared)
            comparison_.differences.clear();
        return std::move(comparison_);
    }

private:
    bool end(Outcome outcome, const std::string& file, const QString& message)
    {
        comparison_.outcome = outcome;
        comparison_.file = file;
        comparison_.message = message;
        return false;
    }

    bool findKind(const InputFile& file, FileKind& kind)
    {
        if (!file.isOpen()) {
            return end(Outcome::CannotOpen, file.path(),
                       QLatin1String("the file can't be opened: ") + file.errorString());
        }
        kind = kindOf(file);
        if (kind != FileKind::Unknown)
            return true;
        const QString error = file.readError();
        if (!error.isEmpty()) {
            return end(Outcome::CannotOpen, file.path(),
                       QLatin1String("the file can't be read to its end: ") + error);
        }
        return end(Outcome::UnknownKind, file.path(), QStringLiteral("the file is none of the five kinds"));
    }

    bool checkKinds()
    {
        if (!areComparable(comparison_.kindOfA, comparison_.kindOfB)) {
            return end(Outcome::OtherKinds, {},
                       QStringLiteral("the files are of different kinds, %1 and %2")
                           .arg(kindName(comparison_.kindOfA), kindName(comparison_.kindOfB)));
        }
        if (comparison_.kindOfA != FileKind::Results && !options_.fields.empty())
            return end(Outcome::NoSuchField, {}, QStringLiteral("files of this kind have no fields"));
        return true;
    }

    bool compareFiles()
    {
        const bool isOfResults = comparison_.kindOfA == FileKind::Results;
        const qint64 bytesInAll = a_.size() + b_.size();
        meter_.setBytesInAll(bytesInAll);
        const bool areSame =
            !isOfResults && comparison_.kindOfA == comparison_.kindOfB && haveSameBytes(a_, b_);
        if (!areSame && !compareValues(a_, b_, options_, meter_, comparison_))
            return false;
        return isOfResults ? compareFields(a_, b_, options_, meter_, comparison_)
                           : meter_.advanceTo(bytesInAll);
    }

    InputFile a_;
    InputFile b_;
    const ComparisonOptions& options_;
    Io::ResultsProgressMeter meter_;
    Comparison comparison_;
};

} // namespace

Comparison compare(const std::string& pathOfA, const std::string& pathOfB, const ComparisonOptions& options)
{
    return FileComparison(pathOfA, pathOfB, options).run();
}

} // namespace Nereo::Inspection
