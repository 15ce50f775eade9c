#include "Json.h"

#include "Numbers.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cmath>

namespace Nereo::Tool {

namespace {

/// Whether no character of a text is written in another way, as nearly always.
bool isPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar character) {
        return character >= QLatin1Char(' ') && character <= QLatin1Char('~') && character != QLatin1Char('"')
            && character != QLatin1Char('\\');
    });
}

/// With quotation marks, and the characters escaped that need it.
QByteArray quoted(const QString& text)
{
    if (isPlain(text))
        return '"' + text.toLatin1() + '"';
    const QByteArray array = QJsonDocument(QJsonArray {text}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

std::string_view view(const QByteArray& bytes)
{
    return {bytes.constData(), std::size_t(bytes.size())};
}

QString indentation(const std::vector<bool>& levels)
{
    constexpr int perLevel = 4;
    return {perLevel * int(levels.size()), QLatin1Char(' ')};
}

} // namespace

void Json::key(const QString& name)
{
    startLine();
    output_.write(view(quoted(name)));
    output_ << ": ";
    isBehindKey_ = true;
}

void Json::value(const QString& text)
{
    startValue();
    output_.write(view(quoted(text)));
}

void Json::value(qint64 number)
{
    startValue();
    output_ << QString::number(number);
}

void Json::value(double number)
{
    if (!std::isfinite(number))
        return null();
    startValue();
    output_.write(NumberText(number).view());
}

void Json::null()
{
    startValue();
    output_ << "null";
}

void Json::textOrNull(const QString& text)
{
    if (text.isEmpty())
        null();
    else
        value(text);
}

void Json::begin(const char* bracket)
{
    startValue();
    output_ << bracket;
    areEmpty_.push_back(true);
}

void Json::end(const char* bracket)
{
    const bool isEmpty = areEmpty_.back();
    areEmpty_.pop_back();
    if (!isEmpty)
        output_ << QLatin1Char('\n') + indentation(areEmpty_);
    output_ << bracket;
    if (areEmpty_.empty())
        output_ << "\n";
}

void Json::startLine()
{
    output_ << (areEmpty_.back() ? "\n" : ",\n");
    output_ << indentation(areEmpty_);
    areEmpty_.back() = false;
}

/// A value stands behind its key, in a line of its own in an array, or alone.
void Json::startValue()
{
    if (!isBehindKey_ && !areEmpty_.empty())
        startLine();
    isBehindKey_ = false;
}

} // namespace Nereo::Tool
