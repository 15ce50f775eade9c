#include "ControlFileMaterials.h"

#include "NumberFault.h"

#include <FileIO/ControlFileSections.h>
#include <FileIO/MaterialReferenceValues.h>
#include <FileIO/NumberText.h>
#include <NereoFileIO/CodeNameTable.h>

#include <QStringBuilder>

#include <algorithm>

namespace Nereo::Inspection {

namespace {

namespace MaterialLines = Io::MaterialLines;
using Type = Item::Type;

constexpr int fluidReferenceCount = 4; // pressure, temperature, compressibility, vapor pressure
constexpr int solidReference = 1;      // temperature

QString nameOf(int code)
{
    return Io::CodeNameTable::instance().nameForCode(code, false);
}

} // namespace

bool ControlFileMaterials::read(const QString& address)
{
    section_ = address;
    const int before = count_;
    while (lines_.hasLine()) {
        if (lines_.isBlank()) {
            lines_.nextLine();
        } else if (values_.reportLostTitle()) {
            break;
        } else if (++count_; !readMaterial()) {
            skipMaterial();
        }
        lines_.reportCharacters();
    }
    return count_ > before;
}

bool ControlFileMaterials::readMaterial()
{
    if (!readFirstLine())
        return false;
    if (isEnd())
        return readEnd();
    const Range first = lines_.wordFrom(0);
    const bool isSolid = lines_.wordFrom(first.end).isEmpty();
    return isSolid ? readSolid() && readEnd() : readFluid() && readEnd();
}

bool ControlFileMaterials::readFirstLine()
{
    // The name stands behind the numbers, but all addresses need it.
    address_ = section_;
    Range words[4];
    for (int i = 0, at = 0; i < 4; ++i) {
        words[i] = lines_.wordFrom(at);
        double number = 0;
        if (words[i].isEmpty() || lines_.integerFault(words[i], number))
            return refuse(words[i]);
        at = words[i].end;
    }
    const Range name = lines_.restFrom(words[3].end);
    const int repeated = names_.add(lines_.text(name));
    address_ = section_ + QLatin1Char('/');
    if (name.isEmpty())
        address_ += QLatin1Char('#') + QString::number(count_);
    else
        address_ += values_.addressPartOf(name);
    if (repeated > 0 && !name.isEmpty())
        address_ += QLatin1Char('#') + QString::number(repeated + 1);
    values_.element(address_);

    static constexpr const char* elements[] = {"id", "fluid", "resistance", "environment"};
    for (int i = 0; i < 4; ++i) {
        const int number = lines_.integerAt(words[i].begin).value;
        if (i == 0)
            checkId(words[i], number);
        item({elements[i]}, Type::Integer, words[i], number);
    }
    lines_.addPart(name, addressOf({"name"}));
    if (values_.wantsItems()) // and not only to be thrown away, since a name may be long
        item({"name"}, Type::Text, name, lines_.text(name).toString());
    if (repeated > 0 && !name.isEmpty())
        values_.finding(Rule::RepeatedMaterial, address_, name);
    lines_.nextLine();
    return true;
}

void ControlFileMaterials::checkId(Range id, int number)
{
    if (number != 0 && ids_.add(QString::number(number)) > 0)
        values_.finding(Rule::RepeatedId, addressOf({"id"}), id);
}

bool ControlFileMaterials::readFluid()
{
    for (int i = 0; i < fluidReferenceCount; ++i) {
        if (!takeNumber({Io::materialReferenceValues[i].element}, Type::Number))
            return false;
    }
    if (!expectLineEnd() || !expectText(MaterialLines::fluidSettings))
        return false;
    for (const int code : MaterialLines::fluidProperties) {
        if (!readProperty(code))
            return false;
    }
    return readDiffusion();
}

bool ControlFileMaterials::readSolid()
{
    if (!takeNumber({Io::materialReferenceValues[solidReference].element}, Type::Number) || !expectLineEnd())
        return false;
    for (const int code : MaterialLines::solidProperties) {
        if (!readProperty(code))
            return false;
    }
    return true;
}

bool ControlFileMaterials::readProperty(int code)
{
    const QString property = nameOf(code);
    values_.element(address_ + QLatin1Char('/') + property);
    double variation = 0;
    if (!takeUnits(code) || !takeNumber({"variation", property}, Type::Integer, variation))
        return false;
    switch (int(variation)) {
    case MaterialLines::Constant:
        return takeNumber({"value", property}, Type::Number) && expectLineEnd();
    case MaterialLines::EquationOfState:
    case MaterialLines::AdiabaticEquationOfState:
        return takeNumber({"gas_constant", property}, Type::Number) && expectLineEnd();
    case MaterialLines::SameAsKxx:
        return expectLineEnd();
    case MaterialLines::PiecewiseLinear:
        return readCurve(property);
    default:
        return true; // what follows goes on in the same line
    }
}

bool ControlFileMaterials::readCurve(const QString& property)
{
    int intervals = 0;
    int count = 0;
    int code = 0;
    const Range counts = lines_.wordFrom(lines_.at());
    if (!takeInteger(intervals) || !takeInteger(count))
        return false;
    if (count < 0 || intervals != count - 1)
        return refuse(counts);
    const Range variableCode = lines_.wordFrom(lines_.at());
    if (!takeInteger(code))
        return false;
    if (code < 0 || code > Io::kNone)
        return refuse(variableCode);
    const QString variable = nameOf(code);
    const Range name = lines_.wordFrom(lines_.at());
    item({"independent_variable", property}, Type::Text, name, variable);
    if ((!variable.isEmpty() && !expectWord(variable)) || !expectLineEnd())
        return false;
    for (int i = 1; i <= count; ++i) {
        if (!readPoint(property, i))
            return false;
        lines_.reportCharacters();
    }
    return true;
}

bool ControlFileMaterials::readPoint(const QString& property, int number)
{
    if (!values_.wantsItems() && arePlainNumbers(lines_.text(), 2)) { // as nearly always, and there are many
        lines_.nextLine();
        return true;
    }
    return takeNumber({"y", property, number}, Type::Number)
        && takeNumber({"x", property, number}, Type::Number) && expectLineEnd();
}

bool ControlFileMaterials::readDiffusion()
{
    return takeUnits(Io::kSpecDifu) && expectWord(QStringLiteral("1"))
        && takeNumber({"diffusion_coefficient"}, Type::Number) && expectLineEnd();
}

bool ControlFileMaterials::readEnd()
{
    if (!isEnd())
        return refuse(lines_.restFrom(std::min(lines_.at(), lines_.lineEnd())));
    lines_.nextLine();
    return true;
}

/// Takes the name of a property and the unit system behind it.
bool ControlFileMaterials::takeUnits(int code)
{
    const QString property = nameOf(code);
    return expectWord(property) && takeNumber({"units", property}, Type::Integer);
}

bool ControlFileMaterials::expectWord(QStringView expected)
{
    const Range word = lines_.wordFrom(lines_.at());
    if (lines_.text(word) != expected)
        return refuse(word);
    lines_.goTo(word.end);
    return true;
}

bool ControlFileMaterials::expectText(const char* expected)
{
    for (const QString& line : QString::fromLatin1(expected).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (!lines_.hasLine() || !haveSameWords(lines_.text(), line))
            return refuse(lines_.restFrom(0));
        lines_.nextLine();
    }
    return true;
}

bool ControlFileMaterials::expectLineEnd()
{
    if (!lines_.wordFrom(lines_.at()).isEmpty())
        return refuse(lines_.restFrom(lines_.at()));
    lines_.nextLine();
    return true;
}

bool ControlFileMaterials::takeInteger(int& integer)
{
    const Range word = lines_.wordFrom(lines_.at());
    double value = 0;
    if (word.isEmpty() || lines_.integerFault(word, value))
        return refuse(word);
    integer = int(value);
    lines_.goTo(word.end);
    return true;
}

bool ControlFileMaterials::takeNumber(const Name& name, Item::Type type)
{
    double value = 0;
    return takeNumber(name, type, value);
}

bool ControlFileMaterials::takeNumber(const Name& name, Item::Type type, double& value)
{
    if (type == Type::Number && !values_.wantsItems() && lines_.passPlainNumber())
        return true; // and nobody wants to know which one it is
    const Range word = lines_.wordFrom(lines_.at());
    const auto fault = [&] {
        return type == Type::Integer ? lines_.integerFault(word, value) : lines_.numberFault(word, value);
    };
    if (word.isEmpty() || fault())
        return refuse(word);
    item(name, type, word, type == Type::Integer ? QVariant(int(value)) : value);
    lines_.goTo(word.end);
    return true;
}

void ControlFileMaterials::item(const Name& name, Type type, Range range, const QVariant& value)
{
    if (values_.wantsItems())
        values_.item(addressOf(name), type, range, value);
}

QString ControlFileMaterials::addressOf(const Name& name) const
{
    constexpr QLatin1Char slash('/');
    const QLatin1String element(name.element);
    if (name.property.isEmpty())
        return address_ % slash % element;
    if (name.point == 0)
        return address_ % slash % name.property % slash % element;
    const Io::NumberText point(name.point);
    return address_ % slash % name.property % QLatin1String("/points/") % QLatin1String(point) % slash
        % element;
}

/// Whether the material ends in what is left of the line.
bool ControlFileMaterials::isEnd() const
{
    if (!lines_.hasLine())
        return false;
    return lines_.text(lines_.restFrom(lines_.at())) == QLatin1String(MaterialLines::end);
}

void ControlFileMaterials::skipMaterial()
{
    while (lines_.hasLine()) {
        const bool isLast = lines_.text(lines_.restFrom(0)).endsWith(QLatin1String(MaterialLines::end));
        lines_.nextLine();
        if (isLast)
            return;
        lines_.reportCharacters();
    }
}

bool ControlFileMaterials::refuse(Range range)
{
    values_.finding(range.isEmpty() ? Rule::IncompleteMaterial : Rule::BadMaterial, address_, range);
    if (!range.isEmpty())
        lines_.cover(range);
    return false;
}

} // namespace Nereo::Inspection
