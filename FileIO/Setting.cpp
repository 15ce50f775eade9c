#include <NereoFileIO/Setting.h>

#include "Assertion.h"

#include <NereoUtility/StringConversion.h>

#include <cmath>
#include <limits>
#include <utility>

namespace Nereo::Io {

namespace {

bool isInt(double value)
{
    using Limits = std::numeric_limits<int>;
    return value >= Limits::min() && value <= Limits::max() && value == std::trunc(value);
}

} // namespace

Setting::Setting() = default;
Setting::Setting(const Setting& other) = default;
Setting& Setting::operator=(const Setting& other) = default;
Setting::Setting(Setting&& other) noexcept = default;
Setting& Setting::operator=(Setting&& other) noexcept = default;
Setting::~Setting() = default;

Setting::Setting(const std::string& name, QVariant value)
    : name_(Util::toQString(name)), value_(std::move(value))
{
}

std::string Setting::name() const
{
    return Util::toStdString(name_);
}

void Setting::setName(const std::string& name)
{
    name_ = Util::toQString(name);
}

Setting::Type Setting::type() const
{
    switch (value_.userType()) {
    case QMetaType::UnknownType:
        return Invalid;
    case QMetaType::Int:
        return Int;
    case QMetaType::Double:
        return Double;
    case QMetaType::QString:
        return String;
    }
    NEREO_ASSERT_AT(false, "FileIO/Setting", 41);
    return Invalid;
}

void Setting::setValueFromString(const std::string& text)
{
    const QString value = Util::toQString(text);
    switch (value_.userType()) {
    case QMetaType::Int:
        value_ = value.toInt();
        return;
    case QMetaType::Double:
        value_ = value.toDouble();
        return;
    case QMetaType::UnknownType:
    case QMetaType::QString:
        value_ = value;
        return;
    }
    NEREO_ASSERT_AT(false, "FileIO/Setting", 63);
}

void Setting::setValue(const std::string& text)
{
    setValueFromString(text);
}

void Setting::setValue(int value)
{
    const Type before = type();
    if (before == Double)
        value_ = double(value);
    else if (before == String)
        value_ = QVariant(value).toString();
    else
        value_ = value;
}

void Setting::setValue(double value)
{
    const Type before = type();
    if (before == Int)
        value_ = isInt(value) ? int(value) : 0;
    else if (before == String)
        value_ = QVariant(value).toString();
    else
        value_ = value;
}

int Setting::valueAsInt() const
{
    return value_.toInt();
}

double Setting::valueAsDouble() const
{
    return value_.toDouble();
}

std::string Setting::valueAsString() const
{
    return Util::toStdString(value_.toString());
}

} // namespace Nereo::Io
