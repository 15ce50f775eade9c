#include "NewTexts.h"

#include "ControlFileLines.h"
#include "NumberFault.h"
#include "VersionFault.h"

#include <NereoUtility/Version.h>

#include <QLocale>

namespace Nereo::Inspection {

namespace {

using Type = Item::Type;

/// A number as a load reads it, and what is wrong with it.
struct ReadNumber {
    double value = 0;
    std::optional<Rule> fault;
};

/// As the stream of a control file's load reads a word.
ReadNumber readByStream(Type type, const QString& text)
{
    FindingListener listener; // to which nothing is told
    const InputFile file({}, text.toUtf8());
    ControlFileLines lines(file, listener);
    const bool isThere = lines.readLine();
    const Range word = lines.wordFrom(0);
    if (!isThere || word.size() != text.size())
        return {0, Rule::NotANumber};
    ReadNumber number;
    const std::optional<WordFault> fault =
        type == Type::Number ? lines.numberFault(word, number.value) : lines.integerFault(word, number.value);
    if (fault)
        number.fault = fault->rule;
    return number;
}

ReadNumber readByConversion(Type type, const QString& text)
{
    return type == Type::Number ? ReadNumber {text.toDouble(), numberFault(text)}
                                : ReadNumber {double(text.toInt()), integerFault(text)};
}

ReadNumber readNumber(FileKind kind, Type type, const QString& text)
{
    return kind == FileKind::Control ? readByStream(type, text) : readByConversion(type, text);
}

[[noreturn]] void refuseNumber(Type type, const QString& text, std::optional<Rule> fault)
{
    const auto isOutOfRange = [](std::optional<Rule> rule) {
        return rule == Rule::IntegerOutOfRange || rule == Rule::NumberTooLarge
            || rule == Rule::NumberOutOfRange;
    };
    const QString quoted = QLatin1Char('"') + excerpt(text) + QLatin1Char('"');
    if (isOutOfRange(fault))
        throw Refusal(EditProblem::OutOfRange,
                      type == Type::Number ? quoted + QLatin1String(" is outside the range of numbers")
                                           : quoted + QLatin1String(" is outside -2147483648 to 2147483647"));
    if (type == Type::Number)
        throw Refusal(EditProblem::NotANumber, quoted + QLatin1String(" is not a number"));
    throw Refusal(EditProblem::NotAnInteger, quoted + QLatin1String(" is not a whole number"));
}

QVariant variantOf(Type type, double value)
{
    return type == Type::Number ? QVariant(value) : QVariant(int(value));
}

NewText newNumber(FileKind kind, Type type, const QString& given)
{
    const QString text = given.trimmed();
    const ReadNumber asGiven = readNumber(kind, type, text);
    if (!asGiven.fault)
        return {text, variantOf(type, asGiven.value)};

    // What the numbers of the other kinds are written like, a load may read in another form.
    const ReadNumber meant = readByConversion(type, text);
    if (meant.fault)
        refuseNumber(type, text, meant.fault);
    const QVariant value = variantOf(type, meant.value);
    return {type == Type::Number ? shortestText(meant.value) : value.toString(), value};
}

} // namespace

NewText newText(FileKind kind, Type type, const QString& given)
{
    switch (type) {
    case Type::Integer:
    case Type::Number:
        return newNumber(kind, type, given);
    case Type::Switch:
        if (given != QLatin1String("0") && given != QLatin1String("1"))
            throw Refusal(EditProblem::NotASwitch,
                          QLatin1Char('"') + excerpt(given) + QLatin1String("\" is neither 0 nor 1"));
        return {given, given == QLatin1String("1")};
    case Type::Version:
        if (!isVersion(given) || given != given.trimmed())
            throw Refusal(EditProblem::NotAVersion,
                          QLatin1Char('"') + excerpt(given)
                              + QLatin1String("\" isn't four whole numbers joined by dots"));
        return {given, Util::Version(given).toString()};
    default:
        return {given, given};
    }
}

QString shortestText(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

} // namespace Nereo::Inspection
