#include <NereoFileIO/Flag.h>

#include <NereoUtility/StringConversion.h>

namespace Nereo::Io {

Flag::Flag() = default;
Flag::Flag(const Flag& other) = default;
Flag& Flag::operator=(const Flag& other) = default;
Flag::Flag(Flag&& other) noexcept = default;
Flag& Flag::operator=(Flag&& other) noexcept = default;
Flag::~Flag() = default;

std::string Flag::name() const
{
    return Util::toStdString(name_);
}

void Flag::setName(const std::string& name)
{
    name_ = Util::toQString(name);
}

std::string Flag::value() const
{
    return Util::toStdString(value_);
}

void Flag::setValue(const std::string& value)
{
    value_ = Util::toQString(value);
}

void Flag::setValue(int value)
{
    value_ = QString::number(value);
}

void Flag::setValue(double value)
{
    value_ = QString::number(value, 'g', 6);
}

int Flag::valueAsInt() const
{
    return value_.toInt();
}

double Flag::valueAsDouble() const
{
    return value_.toDouble();
}

bool Flag::operator==(const Flag& other) const
{
    return name_ == other.name_ && value_ == other.value_;
}

bool Flag::operator!=(const Flag& other) const
{
    return !(*this == other);
}

} // namespace Nereo::Io
