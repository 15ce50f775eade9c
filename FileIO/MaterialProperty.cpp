#include <NereoFileIO/MaterialProperty.h>

#include "Assertion.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/PropertyType.h>
#include <NereoFileIO/VariationType.h>
#include <NereoUtility/StringConversion.h>

namespace Nereo::Io {

MaterialProperty::MaterialProperty()
    : variationType_(Clt::VariationType::Constant.name()), independentVariable_(kNone)
{
}

MaterialProperty::MaterialProperty(const std::string& type) : MaterialProperty()
{
    type_ = Util::toQString(type);
}

MaterialProperty::MaterialProperty(const MaterialProperty& other) = default;
MaterialProperty& MaterialProperty::operator=(const MaterialProperty& other) = default;
MaterialProperty::MaterialProperty(MaterialProperty&& other) noexcept = default;
MaterialProperty& MaterialProperty::operator=(MaterialProperty&& other) noexcept = default;
MaterialProperty::~MaterialProperty() = default;

std::string MaterialProperty::type() const
{
    return Util::toStdString(type_);
}

int MaterialProperty::typeCode() const
{
    return Clt::PropertyType::fromName(type_).code();
}

std::string MaterialProperty::variationType() const
{
    return Util::toStdString(variationType_);
}

void MaterialProperty::setVariationType(const std::string& variationType)
{
    variationType_ = Util::toQString(variationType);
}

int MaterialProperty::variationCode() const
{
    return Clt::VariationType::fromName(variationType_).code();
}

double MaterialProperty::value() const
{
    return value_;
}

void MaterialProperty::setValue(double value)
{
    value_ = value;
}

int MaterialProperty::independentVariable() const
{
    return independentVariable_;
}

void MaterialProperty::setIndependentVariable(int code)
{
    independentVariable_ = code;
}

void MaterialProperty::addPoint(const Point& point)
{
    points_.push_back(point);
}

void MaterialProperty::addPoint(double x, double y)
{
    points_.emplace_back(x, y);
}

void MaterialProperty::clearPoints()
{
    points_.clear();
}

Point& MaterialProperty::point(int index)
{
    NEREO_ASSERT_INDEX(index, pointCount(), "QList<T>::operator[]", "FileIO/MaterialProperty");
    return points_[std::size_t(index)];
}

const Point& MaterialProperty::point(int index) const
{
    NEREO_ASSERT_INDEX(index, pointCount(), "QList<T>::operator[]", "FileIO/MaterialProperty");
    return points_[std::size_t(index)];
}

int MaterialProperty::pointCount() const
{
    return int(points_.size());
}

void MaterialProperty::removePoint(int index)
{
    NEREO_ASSERT_INDEX(index, pointCount(), "QList<T>::removeAt", "FileIO/MaterialProperty");
    points_.erase(points_.begin() + index);
}

void MaterialProperty::giveBackRoom()
{
    constexpr std::size_t manyPoints = 16 * 1024; // room for so many has pages that were never touched
    if (points_.size() < manyPoints)
        points_.shrink_to_fit();
}

bool operator==(const MaterialProperty& left, const MaterialProperty& right)
{
    return left.type_ == right.type_ && left.variationType_ == right.variationType_
        && left.value_ == right.value_ && left.points_ == right.points_
        && left.independentVariable_ == right.independentVariable_;
}

bool operator!=(const MaterialProperty& left, const MaterialProperty& right)
{
    return !(left == right);
}

} // namespace Nereo::Io
