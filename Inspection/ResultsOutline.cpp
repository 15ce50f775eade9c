#include "ResultsRecords.h"
#include "VariableNames.h"
#include "Walker.h"

#include <FileIO/FieldMemory.h>
#include <FileIO/ResultsFileHeaderReader.h>
#include <FileIO/ResultsFileWalk.h>
#include <NereoFileIO/FieldVariable.h>

#include <QCoreApplication>
#include <QDataStream>
#include <QHash>
#include <QTextCodec>
#include <QtEndian>

#include <algorithm>
#include <limits>
#include <set>
#include <vector>

namespace Nereo::Inspection {

namespace {

namespace Layout = Io::ResultsLayout;

using Io::ResultsFileHeader;
using Io::ResultsProblem;

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";
constexpr int versionSize = 12;

/// Something that the file says once: its address, its place, its length in bytes and what a load makes of
/// it.
struct Fact {
    const char* address;
    Item::Type type;
    int offset;
    int size;
    QVariant (*value)(const ResultsFileHeader& header);
};

constexpr Fact dateFact {"date", Item::Type::Text, Layout::dateOffset, Layout::dateSize,
                         [](const ResultsFileHeader& header) -> QVariant {
                             return QString::fromStdString(header.dateTimeString());
                         }};
constexpr Fact titleFact {
    "title", Item::Type::Text, Layout::titleOffset, Layout::titleSize,
    [](const ResultsFileHeader& header) -> QVariant { return QString::fromStdString(header.title()); }};

template <auto getter>
QVariant numberOf(const ResultsFileHeader& header)
{
    return (header.*getter)();
}

template <int (ResultsFileHeader::*getter)() const>
constexpr Fact integerFact(const char* address, int offset)
{
    return {address, Item::Type::Integer, offset, int(sizeof(qint32)), numberOf<getter>};
}

template <double (ResultsFileHeader::*getter)() const>
constexpr Fact numberFact(const char* address, int offset)
{
    return {address, Item::Type::Number, offset, int(sizeof(double)), numberOf<getter>};
}

QVariant versionOf(const ResultsFileHeader& header)
{
    return header.version().toString();
}

constexpr Fact facts[] = {
    {"version", Item::Type::Version, Layout::versionOffset, versionSize, versionOf},
    dateFact,
    titleFact,
    integerFact<&ResultsFileHeader::nodeCount>("nodes", Layout::nodeCountOffset),
    integerFact<&ResultsFileHeader::elementCount>("elements", Layout::elementCountOffset),
    integerFact<&ResultsFileHeader::currentIteration>("iteration/current", Layout::currentIterationOffset),
    integerFact<&ResultsFileHeader::startingIteration>("iteration/starting", Layout::startingIterationOffset),
    integerFact<&ResultsFileHeader::currentTimeStep>("time-step/current", Layout::currentTimeStepOffset),
    integerFact<&ResultsFileHeader::startingTimeStep>("time-step/starting", Layout::startingTimeStepOffset),
    numberFact<&ResultsFileHeader::currentTime>("time", Layout::currentTimeOffset),
    numberFact<&ResultsFileHeader::timeStepSize>("time-step/size", Layout::timeStepSizeOffset),
};

constexpr const char* nodesAddress = "nodes";

Place at(qint64 offset)
{
    Place place;
    place.offset = offset;
    return place;
}

/// The text of a run of bytes, as far as it is there.
QByteArray textIn(const QByteArray& start, const Fact& fact)
{
    const QByteArray run = start.mid(fact.offset, fact.size);
    return run.left(int(qstrnlen(run.constData(), uint(run.size()))));
}

/// A number in the fewest digits that read back as the same.
QString spellingOf(const QVariant& value)
{
    return value.userType() == QMetaType::Double
        ? QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest)
        : value.toString();
}

/// The first bytes of a text that are no character. They may be the beginning of one that the text ends in.
struct BadBytes {
    int index = -1;
    int size = 0;
    bool isBeginning = false;
};

BadBytes firstBadBytes(const QByteArray& text)
{
    const QTextCodec* const utf8 = QTextCodec::codecForName("UTF-8");
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    int begin = 0; // of a character
    for (int i = 0; i < text.size(); ++i) {
        utf8->toUnicode(text.constData() + i, 1, &state);
        if (state.invalidChars > 0)
            return {begin, std::max(i - begin, 1), false};
        if (state.remainingChars == 0)
            begin = i + 1;
    }
    if (begin == text.size())
        return {};
    return {begin, text.size() - begin, true};
}

/// Whether a name may be one, rather than bytes of something else.
bool isPlausible(QLatin1String name)
{
    const auto isVisible = [](char character) { return character > ' ' && character <= '~'; };
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), isVisible);
}

/// What a load comes to where the byte order is wrong, as a part of a sentence.
QString consequenceOf(Effect effect)
{
    const char* const consequence = effect == Effect::Stops ? "a load stops the process"
        : effect == Effect::Throws                          ? "a load throws"
        : effect == Effect::Zero                            ? "what a load doesn't find is read as 0"
                                                            : "";
    return *consequence == '\0' ? QString() : QCoreApplication::translate("Nereo::Inspection", consequence);
}

/// The way through one file.
class ResultsFindings {
public:
    ResultsFindings(const InputFile& file, Listener& listener) : file_(file), listener_(listener) {}

    void run()
    {
        readHeader();
        tellFacts();
        checkText(dateFact);
        checkText(titleFact);
        if (isReadFromHere() && !header_.hasProblem(ResultsProblem::NegativeFieldCount)) {
            readNames();
            if (areAllNamed_ && header_.nodeCount() > 0 && !listener_.wantsItems())
                readRecords();
        }
        reportCounts();
    }

private:
    void readHeader()
    {
        const auto device = file_.open(QIODevice::NotOpen);
        start_ = device->read(Layout::fieldNamesOffset);
        size_ = std::max(file_.size(), qint64(start_.size()));
        if (start_.size() < std::min(qint64(Layout::fieldNamesOffset), size_)
            || InputFile::hasFailed(*device))
            noteFailure(start_.size(), device->errorString());
        QDataStream in(start_);
        Io::ResultsFileWalk walk(in);
        Io::ResultsFileHeaderReader(header_).read(walk, size_);
    }

    void tellFacts()
    {
        if (!listener_.wantsItems())
            return;
        const int readable =
            header_.isResultsFile() ? start_.size() : std::min(start_.size(), Layout::headerSize);
        for (const Fact& fact : facts) {
            const bool isText = fact.type == Item::Type::Text;
            if (isText ? fact.offset < readable : fact.offset + fact.size <= readable)
                tellFact(fact, isText ? textIn(start_, fact).size() : fact.size);
        }
    }

    void tellFact(const Fact& fact, int length)
    {
        const QVariant value = fact.value(header_);
        QString spelling = spellingOf(value);
        if (fact.type == Item::Type::Version)
            spelling.truncate(spelling.lastIndexOf(QLatin1Char('.'))); // the fourth number isn't in the file
        listener_.item({QLatin1String(fact.address), fact.type, at(fact.offset), length, spelling, value});
    }

    void checkText(const Fact& fact)
    {
        const QByteArray text = textIn(start_, fact);
        if (text.startsWith(byteOrderMark))
            report({Rule::StrayByteOrderMark, at(fact.offset), QLatin1String(fact.address)});
        const BadBytes bad = firstBadBytes(text);
        const bool isCutOff = bad.isBeginning && fact.offset + text.size() == size_;
        if (bad.index < 0 || isCutOff)
            return;
        const QByteArray found = text.mid(bad.index, bad.size).toHex(' ').toUpper();
        report({Rule::ResultsTextNotUtf8, at(fact.offset + bad.index), QLatin1String(fact.address),
                QString::fromLatin1(found)});
    }

    /// Whether the number of fields is there, and everything before it as a load needs it.
    bool isReadFromHere() const
    {
        return header_.isResultsFile() && start_.size() == Layout::fieldNamesOffset && failedAt_ < 0;
    }

    bool isOtherByteOrder() const { return header_.hasProblem(ResultsProblem::OtherByteOrder); }

    void readNames()
    {
        const auto device = file_.open(QIODevice::NotOpen);
        device->seek(Layout::fieldNamesOffset);
        QDataStream in(device.get());
        Io::ResultsFileWalk walk(in);
        if (isOtherByteOrder())
            namesMeant_ = qbswap(header_.fieldCount());
        areAllNamed_ = walk.readFieldNames(header_.fieldCount(), [this](const Io::ResultsFieldName& name) {
            takeName(name);
            return true;
        });
        const qint64 end = Layout::fieldNamesOffset + walk.position();
        if (walk.hasEnded() && (InputFile::hasFailed(*device) || end < size_))
            noteFailure(end, device->errorString());
    }

    void takeName(const Io::ResultsFieldName& name)
    {
        const qint64 offset = Layout::fieldNamesOffset + qint64(Layout::fieldNameSize) * name.column;
        const bool isKnown = name.code != Io::kNone;
        const bool isUsed = isKnown && codes_.insert(name.code).second;
        if (isUsed)
            noteEnd(countEffect());
        if (listener_.wantsItems()) {
            const int values = isUsed ? header_.recordsAnnounced() : 0;
            listener_.item(
                {addressOf(name), Item::Type::Field, at(offset), name.text.size(), name.text, values});
        } else if (isUsed) {
            fields_.push_back({name.column, addressOf(name)});
        } else if (isKnown && name.isWhole) {
            noteEnd(Effect::Stops);
            reportName(Rule::RepeatedField, name, offset);
        } else if (!isKnown && isMeant(name, offset)) {
            reportName(Rule::UnknownField, name, offset);
        }
    }

    void reportName(Rule rule, const Io::ResultsFieldName& name, qint64 offset)
    {
        if (listener_.onlyCounts(rule))
            return;
        Discovery discovery {rule, at(offset), addressOf(name), name.text};
        if (rule == Rule::UnknownField)
            discovery.knownNames = &variableAndFlagNames();
        report(discovery);
    }

    /// Whether these bytes are the name of a field for whoever wrote the file. Where its end comes within the
    /// names a wrong number of fields may have led into the records.
    bool isMeant(const Io::ResultsFieldName& name, qint64 offset)
    {
        const bool areNamesCut = size_ < header_.recordsOffset() - qint64(sizeof(qint32));
        if (areNamesCut && !isPlausible(name.text))
            namesMeant_ = std::min(namesMeant_, name.column);
        const bool isTextWhole = name.isWhole || offset + name.text.size() < size_;
        return name.column < namesMeant_ && isTextWhole;
    }

    QString addressOf(const Io::ResultsFieldName& name)
    {
        if (name.text.isEmpty())
            return QLatin1Char('#') + QString::number(name.column + 1);
        const int count = ++met_[name.text];
        const QString part = addressPart(name.text);
        return count == 1 ? part : part + QLatin1Char('#') + QString::number(count);
    }

    /// What the number of nodes makes of the first field that a load adds.
    std::optional<Effect> countEffect() const
    {
        if (header_.nodeCount() < 0)
            return Effect::Stops;
        if (header_.nodeCount() > Io::mostValuesOfField)
            return Effect::Throws;
        return {};
    }

    /// The first effect that ends a load stays.
    void noteEnd(std::optional<Effect> effect)
    {
        if (!end_)
            end_ = effect;
    }

    void readRecords()
    {
        std::vector<int> columns;
        for (const Field& field : fields_)
            columns.push_back(field.column);
        ResultsRecords records(file_, header_, columns);
        records.run();
        if (records.failedAt() >= 0)
            noteFailure(records.failedAt(), records.errorString());

        const Io::ResultsDamage damage = records.damage();
        if (damage.recordsOutOfRange > 0 && !fields_.empty())
            noteEnd(Effect::Stops);
        if (isOtherByteOrder())
            return; // all of this is because of that
        reportNodes(damage);
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            const NotFiniteValues& values = records.notFinite()[i];
            if (values.count > 0)
                report({Rule::NotFinite,
                        at(values.firstOffset),
                        fields_[i].address,
                        QString::number(values.count),
                        {QString::number(values.firstNode)}});
        }
    }

    void reportNodes(const Io::ResultsDamage& damage)
    {
        const bool isStored = !fields_.empty();
        if (damage.recordsOutOfRange > 0) {
            report({
                isStored ? Rule::NodeOutOfRange : Rule::NodeOutOfRangeUnused,
                at(damage.firstOutOfRangeOffset),
                {                                         },
                QString::number(damage.firstNodeOutOfRange),
                { QString::number(header_.nodeCount()), QString::number(damage.recordsOutOfRange)}
            });
        }
        if (damage.repeatedRecords == 0)
            return;
        report({isStored ? Rule::RepeatedNode : Rule::RepeatedNodeUnused,
                at(damage.firstRepeatedOffset),
                {},
                QString::number(damage.firstRepeatedNode),
                {QString::number(damage.repeatedRecords)}});
        // Of the others no record is there that could be theirs: it is cut off, or of a node out of range.
        if (size_ >= header_.bytesAnnounced() && failedAt_ < 0) {
            report({isStored ? Rule::MissingNode : Rule::MissingNodeUnused,
                    at(header_.bytesAnnounced()),
                    {},
                    QString::number(damage.firstMissingNode),
                    {QString::number(damage.missingNodes)}});
        }
    }

    void reportCounts()
    {
        if (failedAt_ >= 0)
            report({Rule::CannotRead, at(failedAt_), {}, error_});
        for (const int offset : {Layout::headerMarkerOffset, Layout::runMarkerOffset})
            checkMarker(offset);
        if (isOtherByteOrder())
            return reportByteOrder();
        checkSigns();
        const bool isTooLarge = end_ == Effect::Throws;
        if (isTooLarge) {
            report({Rule::TooLarge,
                    at(Layout::nodeCountOffset),
                    QLatin1String(nodesAddress),
                    QString::number(header_.nodeCount()),
                    {QString::number(Io::mostValuesOfField)}});
        } else if (failedAt_ < 0) {
            checkEnd();
        }
    }

    void checkMarker(int offset)
    {
        const ResultsProblem::Kind kind = offset == Layout::headerMarkerOffset
            ? ResultsProblem::BadHeaderMarker
            : ResultsProblem::BadRunMarker;
        if (!header_.hasProblem(kind))
            return;
        const char* const marker = start_.constData() + offset;
        const bool isLittleEndian = header_.byteOrder() == ResultsFileHeader::LittleEndian;
        const int found = isLittleEndian ? qFromLittleEndian<qint32>(marker) : qFromBigEndian<qint32>(marker);
        report({Rule::BadMarker, at(offset), {}, QString::number(found)});
    }

    void reportByteOrder()
    {
        if (header_.hasProblem(ResultsProblem::NegativeFieldCount))
            noteEnd(Effect::Stops);
        const Effect effect = end_.value_or(fields_.empty() ? Effect::None : Effect::Zero);
        Discovery discovery {Rule::ByteOrder, at(0)};
        discovery.found = QString::number(qFromBigEndian<qint32>(start_.constData()));
        discovery.effect = effect;
        discovery.consequence = consequenceOf(effect);
        report(discovery);
    }

    void checkSigns()
    {
        if (header_.hasProblem(ResultsProblem::NegativeNodeCount)) {
            report({fields_.empty() ? Rule::NegativeCountUnused : Rule::NegativeCount,
                    at(Layout::nodeCountOffset), QLatin1String(nodesAddress),
                    QString::number(header_.nodeCount())});
        }
        if (header_.hasProblem(ResultsProblem::NegativeFieldCount)) {
            report({Rule::NegativeCount,
                    at(Layout::fieldCountOffset),
                    {},
                    QString::number(header_.fieldCount())});
        }
    }

    void checkEnd()
    {
        const qint64 announced = header_.bytesAnnounced();
        if (header_.hasProblem(ResultsProblem::TooShort)
            || header_.hasProblem(ResultsProblem::CountsPastTheFile)) {
            const bool isStored = !areAllNamed_ || !fields_.empty();
            report({isStored ? Rule::CutShort : Rule::CutShortUnused,
                    at(size_),
                    {},
                    QString::number(header_.wholeRecords()),
                    {QString::number(header_.recordsAnnounced())}});
        } else if (announced >= 0 && announced < size_ && header_.nodeCount() >= 0) {
            report({Rule::TrailingBytes, at(announced), {}, QString::number(size_ - announced)});
        }
    }

    void noteFailure(qint64 offset, const QString& error)
    {
        failedAt_ = offset;
        error_ = error;
    }

    void report(const Discovery& discovery) { listener_.finding(discovery); }

    struct Field {
        int column;
        QString address;
    };

    const InputFile& file_;
    Listener& listener_;
    QByteArray start_; ///< up to the names
    qint64 size_ = 0;
    ResultsFileHeader header_; ///< without the names
    int namesMeant_ = std::numeric_limits<int>::max();
    bool areAllNamed_ = false;
    std::set<int> codes_;
    std::vector<Field> fields_; ///< those that a load adds
    QHash<QString, int> met_;   ///< names, and how often
    std::optional<Effect> end_; ///< of a load
    qint64 failedAt_ = -1;
    QString error_;
};

} // namespace

void walkResults(const InputFile& file, Listener& listener)
{
    ResultsFindings(file, listener).run();
}

} // namespace Nereo::Inspection
