#include <NereoFileIO/Setting.h>

#include "Assertion.h"

#include <NereoUtility/StringConversion.h>

#include <utility>

namespace Nereo::Io {

Setting::Setting() = default;
Setting::Setting(const Setting& other) = default;
Setting& Setting::operator=(const Setting& other) = default;
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
