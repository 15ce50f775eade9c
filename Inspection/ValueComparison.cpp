#include "ValueComparison.h"

#include "Tolerance.h"
#include "ValueTable.h"
#include "Walker.h"

#include <FileIO/ResultsProgressMeter.h>

#include <QByteArray>

#include <algorithm>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Nereo::Inspection {

namespace {

using Position = ValueTable::Position;
using Entry = ValueTable::Entry;

constexpr char dateOfResults[] = "date";
constexpr char version[] = "version";
constexpr char elementEnd = '/';

/// Stops a walk.
struct Stop {};

/// Adds the text in UTF-8.
void appendText(std::string& bytes, QStringView text)
{
    const std::size_t before = bytes.size();
    bytes.resize(before + std::size_t(text.size()));
    unsigned bits = 0;
    std::transform(text.begin(), text.end(), bytes.begin() + std::ptrdiff_t(before),
                   [&bits](QChar character) {
                       bits |= character.unicode();
                       return char(character.unicode());
                   });
    if (bits < 0x80) // as nearly always: ASCII
        return;
    const QByteArray utf8 = text.toUtf8();
    bytes.resize(before);
    bytes.append(utf8.constData(), std::size_t(utf8.size()));
}

/// Makes the bytes those of the text, and keeps their memory for the next.
void assignText(std::string& bytes, QStringView text)
{
    bytes.clear();
    appendText(bytes, text);
}

SaidValue::Type typeOf(Item::Type type)
{
    switch (type) {
    case Item::Type::Number:
        return SaidValue::Type::Number;
    case Item::Type::Integer:
    case Item::Type::Switch:
        return SaidValue::Type::WholeNumber;
    default:
        return SaidValue::Type::Text;
    }
}

/// Hands the values of a file on, element by element.
class ValueListener : public Listener {
public:
    using Take = std::function<void(std::string_view address, const SaidValue& value)>;

    /// The address is that of a value which takes no part.
    ValueListener(const char* ignored, qint64 bytesBefore, Io::ResultsProgressMeter& meter, Take take)
        : ignored_(ignored), bytesBefore_(bytesBefore), meter_(meter), take_(std::move(take))
    {
    }

    QString error() const { return error_; } ///< why the file couldn't be read to its end

    bool wantsItems() const override { return true; }
    bool wantsPlaces() const override { return false; }
    bool wantsFindings() const override { return false; }

    void item(const Item& item) override { itemIn({}, item); }

    void itemIn(const QString& part, const Item& item) override
    {
        if (item.place.hasOffset() && !meter_.advanceTo(bytesBefore_ + item.place.offset))
            throw Stop();
        if (item.type == Item::Type::Field || (part.isEmpty() && item.address == ignored_))
            return;
        const bool isText = item.type == Item::Type::Text;
        const bool isNumber = !isText && item.type != Item::Type::Version;
        assignText(address_, part);
        appendText(address_, item.address);
        assignText(text_, isNumber ? QString() : item.value.toString());
        if (!isText)
            assignText(shown_, QStringView(item.spelling).trimmed());
        const double number = isNumber ? item.value.toDouble() : 0.0;
        take_(address_, {typeOf(item.type), number, text_, isText ? text_ : shown_});
    }

    void element(const QString& address) override
    {
        assignText(address_, address);
        address_ += elementEnd;
        take_(address_, {SaidValue::Type::Element});
    }

    void finding(const Discovery& discovery) override
    {
        if (isReadError(discovery.rule))
            error_ = discovery.found;
    }

    bool onlyCounts(Rule rule) override { return !isReadError(rule); }

private:
    static bool isReadError(Rule rule) { return rule == Rule::CannotRead || rule == Rule::CannotReadXml; }

    QLatin1String ignored_;
    qint64 bytesBefore_;
    Io::ResultsProgressMeter& meter_;
    Take take_;
    QString error_;
    std::string address_; ///< of the value that is handed on
    std::string text_;
    std::string shown_;
};

/// Whether nothing at all tells two values apart.
bool areIdentical(const SaidValue& a, const SaidValue& b)
{
    return a.type == b.type && distanceOf(a.number, b.number) == 0 && a.text == b.text;
}

bool areDifferent(const SaidValue& a, const SaidValue& b, const Tolerance& tolerance)
{
    if (a.type == SaidValue::Type::Number && b.type == SaidValue::Type::Number)
        return areDifferent(a.number, b.number, tolerance);
    return !areIdentical(a, b);
}

/// A byte-order mark at the start is a character, which Qt keeps behind another one.
QString toQString(std::string_view text)
{
    return QString::fromStdString(std::string(1, elementEnd).append(text)).mid(1);
}

QString addressOf(const Entry& entry)
{
    std::string address = entry.address.text();
    if (entry.value.type == SaidValue::Type::Element)
        address.pop_back(); // its slash
    return toQString(address);
}

/// What a file says, for people; of an element the first of its values.
QString shownOf(const ValueTable& table, const Entry& entry)
{
    Entry shown = entry;
    const std::string address =
        entry.value.type == SaidValue::Type::Element ? entry.address.text() : std::string();
    while (shown.value.type == SaidValue::Type::Element && shown.next < table.end()) {
        shown = table.at(shown.next);
        if (shown.address.text().compare(0, address.size(), address) != 0)
            return {};
    }
    return toQString(shown.value.shown);
}

/// The values of one file are kept. Those of the other are met with them as they come, and only those that
/// aren't the same are kept.
class ValueComparison {
public:
    ValueComparison(const ComparisonOptions& options, std::vector<Difference>& differences)
        : tolerance_(options), differences_(differences)
    {
    }

    void takeOfA(std::string_view address, const SaidValue& value) { a_.append(address, value); }

    void takeOfB(std::string_view address, const SaidValue& value)
    {
        Position position = cursor_; // as most often
        Entry entry = position < a_.end() ? a_.at(position) : Entry();
        if (position == a_.end() || a_.isReplaced(position) || entry.address != address) {
            position = lookedUpInA(address);
            if (position == ValueTable::none)
                return keepOfB(cursor_, false, address, value);
            entry = a_.at(position);
        }
        cursor_ = entry.next;
        const bool isSame = areIdentical(entry.value, value) && entry.value.shown == value.shown;
        if (a_.isMet(position) || !isSame)
            keepOfB(position, true, address, value);
        a_.setMet(position);
    }

    void tellDifferences()
    {
        if (!isLookedUp_ && others_.empty() && cursor_ == a_.end())
            return;
        prepareLookUp();
        b_.find({}); // tells which values of B are replaced
        std::sort(others_.begin(), others_.end());
        auto other = others_.begin();
        for (Position position = 0; position < a_.end();) {
            const Entry entry = a_.at(position);
            for (; other != others_.end() && other->place == position && !other->isMet; ++other)
                tellOnlyInB(*other);
            if (!a_.isMet(position))
                tellOnlyInA(position, entry);
            for (; other != others_.end() && other->place == position; ++other)
                tellChanged(entry, *other);
            position = entry.next;
        }
        for (; other != others_.end(); ++other)
            tellOnlyInB(*other);
    }

private:
    /// A value of B that isn't just that of A.
    struct Other {
        Position place; ///< in A, of the value with its address, or of what it comes before
        bool isMet;     ///< whether A has its address
        Position inB;

        friend bool operator<(const Other& left, const Other& right)
        {
            return std::tie(left.place, left.isMet, left.inB) < std::tie(right.place, right.isMet, right.inB);
        }
    };

    Position lookedUpInA(std::string_view address)
    {
        prepareLookUp();
        return a_.find(address);
    }

    void keepOfB(Position place, bool isMet, std::string_view address, const SaidValue& value)
    {
        others_.push_back({place, isMet, b_.append(address, value)});
    }

    /// Up to here the files said the same addresses, and nobody knew which values others replace. Where the
    /// one that does stands farther on in A, what B said last is what meets it.
    void prepareLookUp()
    {
        if (isLookedUp_)
            return;
        isLookedUp_ = true;
        a_.find({});
        const std::vector<Other> kept = std::exchange(others_, {});
        auto other = kept.begin();
        for (Position position = 0; position < cursor_;) {
            const Entry entry = a_.at(position);
            const bool isKept = other != kept.end() && other->place == position;
            if (a_.isReplaced(position))
                meetLast(entry, isKept ? b_.at(other->inB).value : entry.value);
            else if (isKept)
                others_.push_back(*other);
            other += isKept;
            position = entry.next;
        }
    }

    void meetLast(const Entry& replaced, const SaidValue& ofB)
    {
        const std::string address = replaced.address.text();
        const Position last = a_.find(address);
        if (last < cursor_)
            return;
        a_.setMet(last);
        const std::string text(ofB.text); // copies, since this may stand in what now grows
        const std::string shown(ofB.shown);
        keepOfB(last, true, address, {ofB.type, ofB.number, text, shown});
    }

    void tellChanged(const Entry& inA, const Other& other)
    {
        const Entry inB = b_.at(other.inB);
        if (!b_.isReplaced(other.inB) && areDifferent(inA.value, inB.value, tolerance_))
            differences_.push_back({addressOf(inA), shownOf(a_, inA), shownOf(b_, inB), {}});
    }

    void tellOnlyInA(Position position, const Entry& entry)
    {
        const auto isUnmet = [this](Position element) { return !a_.isMet(element); };
        if (!a_.isReplaced(position) && !isInElement(a_, entry.address.text(), isUnmet))
            differences_.push_back({addressOf(entry), shownOf(a_, entry), {}, {}});
    }

    void tellOnlyInB(const Other& other)
    {
        const auto isOnlyInB = [this](Position element) {
            return a_.find(b_.at(element).address.text()) == ValueTable::none;
        };
        const Entry entry = b_.at(other.inB);
        if (!b_.isReplaced(other.inB) && !isInElement(b_, entry.address.text(), isOnlyInB))
            differences_.push_back({addressOf(entry), {}, shownOf(b_, entry), {}});
    }

    /// Whether the value at an address belongs to an element of which that is true.
    template <class IsTrue>
    static bool isInElement(ValueTable& table, std::string_view address, IsTrue isTrue)
    {
        const std::size_t last = address.size() - 1; // an element isn't its own
        for (std::size_t at = address.find(elementEnd); at < last; at = address.find(elementEnd, at + 1)) {
            const Position element = table.find(address.substr(0, at + 1));
            if (element != ValueTable::none && isTrue(element))
                return true;
        }
        return false;
    }

    Tolerance tolerance_;
    std::vector<Difference>& differences_;
    ValueTable a_;
    ValueTable b_;              ///< what is kept of B
    std::vector<Other> others_; ///< the places of that
    Position cursor_ = 0;       ///< in A, behind what B said last
    bool isLookedUp_ = false;   ///< whether addresses of A are
};

/// What takes no part in a comparison of these kinds.
const char* ignoredValue(const Comparison& comparison)
{
    if (comparison.kindOfA == FileKind::Results)
        return dateOfResults;
    return comparison.kindOfA == comparison.kindOfB ? "" : version;
}

} // namespace

bool compareValues(const InputFile& a, const InputFile& b, const ComparisonOptions& options,
                   Io::ResultsProgressMeter& meter, Comparison& comparison)
{
    ValueComparison values(options, comparison.differences);
    const auto walk = [&](const InputFile& file, FileKind kind, qint64 bytesBefore,
                          void (ValueComparison::*take)(std::string_view, const SaidValue&)) {
        ValueListener listener(
            ignoredValue(comparison), bytesBefore, meter,
            [&](std::string_view address, const SaidValue& value) { (values.*take)(address, value); });
        walkOf(kind)(file, listener);
        if (listener.error().isEmpty())
            return true;
        comparison.outcome = Comparison::Outcome::CannotOpen;
        comparison.file = file.path();
        comparison.message = QLatin1String("the file can't be read to its end: ") + listener.error();
        return false;
    };
    // Of results the start is looked at here, and all of it where the fields are compared.
    const qint64 bytesOfA = comparison.kindOfA == FileKind::Results ? 0 : a.size();
    try {
        if (!walk(a, comparison.kindOfA, 0, &ValueComparison::takeOfA)
            || !walk(b, comparison.kindOfB, bytesOfA, &ValueComparison::takeOfB))
            return false;
    } catch (const Stop&) {
        return false; // which the meter knows
    }
    values.tellDifferences();
    return true;
}

} // namespace Nereo::Inspection
