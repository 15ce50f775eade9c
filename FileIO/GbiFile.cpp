#include <NereoFileIO/GbiFile.h>

#include "Assertion.h"
#include "FileAccess.h"
#include "GbiFileTextWriter.h"

namespace Nereo::Io {

GbiFile::GbiFile()
{
    setDefaults();
}

GbiFile::GbiFile(const GbiFile& other) = default;
GbiFile& GbiFile::operator=(const GbiFile& other) = default;
GbiFile::GbiFile(GbiFile&& other) = default;
GbiFile& GbiFile::operator=(GbiFile&& other) noexcept = default;
GbiFile::~GbiFile() = default;

std::string GbiFile::jobName() const
{
    return jobName_;
}

void GbiFile::setJobName(const std::string& jobName)
{
    jobName_ = jobName;
}

std::string GbiFile::productLine() const
{
    return productLine_;
}

void GbiFile::setProductLine(const std::string& productLine)
{
    productLine_ = productLine;
}

GbiFile::CoordinateSystem GbiFile::coordinateSystem() const
{
    return coordinateSystem_;
}

void GbiFile::setCoordinateSystem(CoordinateSystem coordinateSystem)
{
    coordinateSystem_ = coordinateSystem;
}

GbiFile::Units GbiFile::units() const
{
    return units_;
}

void GbiFile::setUnits(Units units)
{
    units_ = units;
}

MaterialDatabaseFile& GbiFile::materialDatabase()
{
    return materialDatabase_;
}

const MaterialDatabaseFile& GbiFile::materialDatabase() const
{
    return materialDatabase_;
}

void GbiFile::setMaterialDatabase(const MaterialDatabaseFile& materialDatabase)
{
    materialDatabase_ = materialDatabase;
}

void GbiFile::addSurfaceBoundaryCondition(const BoundaryCondition& condition)
{
    surfaceBoundaryConditions_.push_back(condition);
}

int GbiFile::surfaceBoundaryConditionCount() const
{
    return int(surfaceBoundaryConditions_.size());
}

BoundaryCondition& GbiFile::surfaceBoundaryCondition(int index)
{
    NEREO_ASSERT_INDEX(index, surfaceBoundaryConditionCount(), "QList<T>::operator[]", "FileIO/GbiFile");
    return surfaceBoundaryConditions_[std::size_t(index)];
}

const BoundaryCondition& GbiFile::surfaceBoundaryCondition(int index) const
{
    NEREO_ASSERT_INDEX(index, surfaceBoundaryConditionCount(), "QList<T>::operator[]", "FileIO/GbiFile");
    return surfaceBoundaryConditions_[std::size_t(index)];
}

void GbiFile::setSurfaceBoundaryCondition(int index, const BoundaryCondition& condition)
{
    surfaceBoundaryCondition(index) = condition;
}

void GbiFile::removeSurfaceBoundaryCondition(int index)
{
    NEREO_ASSERT_INDEX(index, surfaceBoundaryConditionCount(), "QList<T>::removeAt", "FileIO/GbiFile");
    surfaceBoundaryConditions_.erase(surfaceBoundaryConditions_.begin() + index);
}

void GbiFile::clearSurfaceBoundaryConditions()
{
    surfaceBoundaryConditions_.clear();
}

bool GbiFile::doLoadFrom(const std::string& path)
{
    return canLoad(path);
}

bool GbiFile::doSaveTo(const std::string& path) const
{
    return save<GbiFileTextWriter>(path, *this);
}

void GbiFile::setDefaults()
{
    productLine_ = Util::toStdString(QStringLiteral("NEREO 2024 (%1)").arg(Util::Version::Branch()));
    coordinateSystem_ = XYZ;
    units_ = Meter;
}

} // namespace Nereo::Io
