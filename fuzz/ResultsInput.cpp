#include "ResultsInput.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>

#include <QtEndian>

#include <algorithm>
#include <limits>

using Nereo::Io::CodeNameTable;
using Nereo::Io::kNone;

namespace {

// Where things stand.
constexpr int nodeCountPlace = 298;
constexpr int headerMarkerPlace = 306;
constexpr int runMarkerPlace = 342;
constexpr int fieldCountPlace = 346;
constexpr int namesPlace = 350;

constexpr int nameSize = 21;
constexpr int intSize = 4;
constexpr int doubleSize = 8;

constexpr int mostNodes = 100000;
constexpr int fewNodes = 1000; // what a number that is no count most often becomes, so that loads stay fast

} // namespace

ResultsInput::ResultsInput(const QByteArray& bytes) : bytes_(bytes)
{
    isLittleEndian_ = !holds(0, intSize) || numberAt<qint32>(0) == 0;
    if (!hasMarkers() || !holds(fieldCountPlace, intSize))
        return;
    nodeCount_ = numberAt<qint32>(nodeCountPlace);
    fieldCount_ = numberAt<qint32>(fieldCountPlace) & std::numeric_limits<qint32>::max();
    setIntAt(fieldCountPlace, fieldCount_);
    walkNames();
    if (codeOfColumn_.isEmpty())
        return; // then neither the number of nodes nor those in the records matter
    limitNodeCount();
    for (const int code : qAsConst(codeOfColumn_))
        fields_[code].resize(nodeCount_);
    walkRecords();
}

template <class Number>
Number ResultsInput::numberAt(qint64 place) const
{
    const char* const number = bytes_.constData() + place;
    return isLittleEndian_ ? qFromLittleEndian<Number>(number) : qFromBigEndian<Number>(number);
}

void ResultsInput::setIntAt(qint64 place, qint32 number)
{
    char* const bytes = bytes_.data() + place;
    isLittleEndian_ ? qToLittleEndian(number, bytes) : qToBigEndian(number, bytes);
}

bool ResultsInput::hasMarkers() const
{
    const auto isMarkedAt = [this](int place) {
        return holds(place, intSize) && numberAt<qint32>(place) == -1;
    };
    return isMarkedAt(headerMarkerPlace) && isMarkedAt(runMarkerPlace);
}

void ResultsInput::walkNames()
{
    qint64 place = namesPlace;
    for (int column = 0; column < fieldCount_ && holds(place, 1); ++column, place += nameSize) {
        const QByteArray name = bytes_.mid(int(place), nameSize);
        const int code = CodeNameTable::instance().codeForName(QString::fromLatin1(name.constData()));
        const bool isKnown = code != kNone;
        const bool isRepeated = std::count(codeOfColumn_.begin(), codeOfColumn_.end(), code) != 0;
        if (isKnown && !isRepeated)
            codeOfColumn_.insert(column, code);
        else if (isKnown && name.size() == nameSize)
            bytes_[int(place)] = '\0'; // one that is cut off is no field
    }
}

void ResultsInput::limitNodeCount()
{
    if (nodeCount_ < 0 || nodeCount_ > mostNodes)
        nodeCount_ = (nodeCount_ & std::numeric_limits<qint32>::max()) % fewNodes;
    setIntAt(nodeCountPlace, nodeCount_);
}

void ResultsInput::walkRecords()
{
    const qint64 recordSize = intSize + qint64(doubleSize) * fieldCount_;
    qint64 place = namesPlace + qint64(nameSize) * fieldCount_ + intSize;
    for (int i = 0; i < nodeCount_ && holds(place, intSize); ++i, place += recordSize)
        walkRecord(place);
}

void ResultsInput::walkRecord(qint64 place)
{
    const auto number = numberAt<qint32>(place);
    if (number < 1 || number > nodeCount_)
        setIntAt(place, 1 + (number & std::numeric_limits<qint32>::max()) % nodeCount_);
    const int node = numberAt<qint32>(place);
    for (auto field = codeOfColumn_.cbegin(); field != codeOfColumn_.cend(); ++field) {
        const qint64 valuePlace = place + intSize + qint64(doubleSize) * field.key();
        fields_[field.value()][node - 1] = holds(valuePlace, doubleSize) ? numberAt<double>(valuePlace) : 0.0;
    }
}
