#include "ResultsComparison.h"

#include "OrderedRecords.h"
#include "ResultsPair.h"
#include "ScatteredRecords.h"

#include <NereoUtility/StringConversion.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace Nereo::Inspection {

namespace {

/// The way through two files.
class ResultsComparison {
public:
    ResultsComparison(const InputFile& a, const InputFile& b, const ComparisonOptions& options,
                      Io::ResultsProgressMeter& meter, Comparison& comparison)
        : pair_(a, b, options, meter, comparison), differences_(comparison.differences)
    {
        for (const std::string& name : options.fields)
            wanted_.append(Util::toQString(name));
    }

    bool run()
    {
        for (const ResultsSide* side : {&pair_.a, &pair_.b}) {
            if (!side->list.error.isEmpty())
                return pair_.end(Comparison::Outcome::CannotOpen, side->file.path(),
                                 QLatin1String("the file can't be read to its end: ") + side->list.error);
        }
        for (const QString& name : wanted_) {
            if (!isListed(pair_.a, name) && !isListed(pair_.b, name))
                return pair_.end(Comparison::Outcome::NoSuchField, {},
                                 QStringLiteral("neither file has a field \"%1\"").arg(name));
        }
        pairFields();
        try {
            if (!compareRecords())
                return false;
        } catch (const ResultsPair::Stop&) {
            return false;
        }
        tellFields();
        return true;
    }

private:
    static bool isListed(const ResultsSide& side, const QString& name)
    {
        return std::any_of(side.list.fields.begin(), side.list.fields.end(),
                           [&name](const ListedField& field) { return isNamed(field, name); });
    }

    bool isWanted(const ListedField& field) const
    {
        return wanted_.isEmpty()
            || std::any_of(wanted_.begin(), wanted_.end(),
                           [&field](const QString& name) { return isNamed(field, name); });
    }

    void pairFields()
    {
        for (const ListedField& field : pair_.a.list.fields) {
            const ListedField* const other = pair_.b.list.find(field);
            if (!isWanted(field))
                continue;
            if (other != nullptr)
                pair_.fields.push_back(
                    {field.address, field.column, other->column, FieldComparison(pair_.options)});
            else
                onlyInOne_.push_back({field.address, valuesIn(pair_.a), {}, {}});
        }
        for (const ListedField& field : pair_.b.list.fields) {
            if (isWanted(field) && pair_.a.list.find(field) == nullptr)
                onlyInOne_.push_back({field.address, {}, valuesIn(pair_.b), {}});
        }
    }

    static QString valuesIn(const ResultsSide& side)
    {
        return QStringLiteral("%1 values").arg(side.nodeCount());
    }

    bool compareRecords()
    {
        const qint64 bytes =
            pair_.a.bytesOfRecords() * (pair_.options.peak ? 2 : 1) + pair_.b.bytesOfRecords();
        if (pair_.fields.empty() || bytes == 0)
            return true;
        pair_.expectBytes(bytes);
        if (OrderedRecords(pair_).compare())
            return true;
        for (ComparedField& field : pair_.fields)
            field.comparison = FieldComparison(pair_.options);
        return ScatteredRecords(pair_).compare();
    }

    void tellFields()
    {
        const auto first = std::ptrdiff_t(differences_.size());
        for (const ComparedField& field : pair_.fields) {
            if (field.comparison.isDifferent())
                differences_.push_back({field.address, {}, {}, field.comparison.result(pair_.commonNodes())});
        }
        std::stable_sort(differences_.begin() + first, differences_.end(),
                         [](const Difference& left, const Difference& right) {
                             return left.field->peakShare > right.field->peakShare;
                         });
        std::move(onlyInOne_.begin(), onlyInOne_.end(), std::back_inserter(differences_));
    }

    ResultsPair pair_;
    std::vector<Difference>& differences_;
    std::vector<Difference> onlyInOne_;
    QStringList wanted_;
};

} // namespace

bool compareFields(const InputFile& a, const InputFile& b, const ComparisonOptions& options,
                   Io::ResultsProgressMeter& meter, Comparison& comparison)
{
    return ResultsComparison(a, b, options, meter, comparison).run();
}

} // namespace Nereo::Inspection
