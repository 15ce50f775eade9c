#include <NereoFileIO/BoundaryCondition.h>

#include "Assertion.h"

#include <QString>

namespace Nereo::Io {

BoundaryCondition::BoundaryCondition() : BoundaryCondition(0) {}
BoundaryCondition::BoundaryCondition(int kCode) : kCode_(kCode) {}

BoundaryCondition::BoundaryCondition(const BoundaryCondition& other) = default;
BoundaryCondition& BoundaryCondition::operator=(const BoundaryCondition& other) = default;
BoundaryCondition::BoundaryCondition(BoundaryCondition&& other) noexcept = default;
BoundaryCondition& BoundaryCondition::operator=(BoundaryCondition&& other) noexcept = default;
BoundaryCondition::~BoundaryCondition() = default;

int BoundaryCondition::kCode() const
{
    return kCode_;
}

int BoundaryCondition::entityId() const
{
    return entityId_;
}

void BoundaryCondition::setEntityId(int entityId)
{
    entityId_ = entityId;
}

int BoundaryCondition::timeCurveId() const
{
    return timeCurveId_;
}

void BoundaryCondition::setTimeCurveId(int timeCurveId)
{
    timeCurveId_ = timeCurveId;
}

int BoundaryCondition::timeCurveFlag() const
{
    return timeCurveId_ >= 1 ? -1 : 0;
}

double BoundaryCondition::value() const
{
    return value_;
}

void BoundaryCondition::setValue(double value)
{
    value_ = value;
}

int BoundaryCondition::extraValueCount() const
{
    return extraValues_.size();
}

double BoundaryCondition::extraValue(int index) const
{
    NEREO_ASSERT_INDEX(index, extraValueCount(), "QList<T>::operator[]", "FileIO/BoundaryCondition");
    return extraValues_[index];
}

void BoundaryCondition::addExtraValue(double value)
{
    extraValues_.append(value);
}

void BoundaryCondition::setExtraValue(int index, double value)
{
    NEREO_ASSERT_INDEX(index, extraValueCount(), "QList<T>::operator[]", "FileIO/BoundaryCondition");
    extraValues_[index] = value;
}

void BoundaryCondition::removeExtraValue(int index)
{
    NEREO_ASSERT_INDEX(index, extraValueCount(), "QList<T>::removeAt", "FileIO/BoundaryCondition");
    extraValues_.removeAt(index);
}

void BoundaryCondition::clearExtraValues()
{
    extraValues_.clear();
}

bool BoundaryCondition::operator==(const BoundaryCondition& other) const
{
    return kCode_ == other.kCode_ && entityId_ == other.entityId_ && timeCurveId_ == other.timeCurveId_
        && value_ == other.value_ && extraValues_ == other.extraValues_;
}

bool BoundaryCondition::operator!=(const BoundaryCondition& other) const
{
    return !(*this == other);
}

uint qHash(const BoundaryCondition& condition)
{
    // Equal conditions have equal texts: Qt writes 0.0 and -0.0, which are equal, alike.
    const QString text = QString::number(condition.kCode()) + QString::number(condition.entityId())
        + QString::number(condition.timeCurveId()) + QString::number(condition.value(), 'g', 6);
    return ::qHash(text, 0);
}

} // namespace Nereo::Io
