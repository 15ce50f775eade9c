#pragma once

#include <NereoFileIO/BoundaryCondition.h>
#include <NereoFileIO/Export.h>
#include <NereoFileIO/File.h>
#include <NereoFileIO/MaterialDatabaseFile.h>

#include <deque>
#include <string>

namespace Nereo::Io {

/// The geometry and boundary input file of a solver run: job, coordinate system, length unit, materials and
/// the conditions on surfaces.
///
/// saveTo() writes UTF-8 text; the file's sections about the mesh stay empty. It stops the process at a
/// coordinate system or unit that is no enumerator, and at a condition whose code has no name (outside 0 to
/// kNone). There is no reader: loadFrom() changes nothing and says whether the file can be opened.
///
/// Conditions are counted from 0. An index outside 0 to surfaceBoundaryConditionCount() - 1 stops the
/// process. A reference to a condition holds until one is removed or the whole file is assigned to.
class NEREOFILEIO_EXPORT GbiFile : public File {
public:
    /// The axes of the mesh: X, Y and Z of a cartesian system, R and T (the angle) of a cylindrical one.
    enum CoordinateSystem : int { None, XY, XR, RY, RT, ZY, XZ, XYZ, RTZ };

    /// The unit of lengths.
    enum Units : int { Meter, Centimeter, Millimeter, Feet, Inch, InchWatt };

    GbiFile(); ///< XYZ in Meter, with the product line of this build and all else empty
    GbiFile(const GbiFile& other);
    GbiFile& operator=(const GbiFile& other);
    GbiFile(GbiFile&& other); ///< may throw std::bad_alloc
    GbiFile& operator=(GbiFile&& other) noexcept;
    ~GbiFile() override;

    std::string jobName() const;
    void setJobName(const std::string& jobName);

    /// The program that the file comes from, with its branch: "NEREO 2024 (release)".
    std::string productLine() const;
    void setProductLine(const std::string& productLine);

    CoordinateSystem coordinateSystem() const;
    void setCoordinateSystem(CoordinateSystem coordinateSystem);

    Units units() const;
    void setUnits(Units units);

    /// The materials of the run. Of each, the file names the id, the name and the flags.
    MaterialDatabaseFile& materialDatabase();
    const MaterialDatabaseFile& materialDatabase() const;
    void setMaterialDatabase(const MaterialDatabaseFile& materialDatabase);

    void addSurfaceBoundaryCondition(const BoundaryCondition& condition); ///< a copy, at the end
    int surfaceBoundaryConditionCount() const;
    BoundaryCondition& surfaceBoundaryCondition(int index);
    const BoundaryCondition& surfaceBoundaryCondition(int index) const;
    void setSurfaceBoundaryCondition(int index, const BoundaryCondition& condition);
    void removeSurfaceBoundaryCondition(int index); ///< later ones move down by one
    void clearSurfaceBoundaryConditions();

protected:
    bool doLoadFrom(const std::string& path) override;
    bool doSaveTo(const std::string& path) const override;

private:
    void setDefaults();

    std::string jobName_;
    std::string productLine_;
    CoordinateSystem coordinateSystem_;
    Units units_;
    MaterialDatabaseFile materialDatabase_;
    // No container that copies share: references into it would reach a copy's conditions too.
    std::deque<BoundaryCondition> surfaceBoundaryConditions_;
};

} // namespace Nereo::Io
