#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/Point.h>

#include <QString>

#include <string>
#include <vector>

namespace Nereo::Io {

/// One property of a material: what it is, how it varies, and the numbers for that.
///
/// The type and the variation are names of Clt::PropertyType and Clt::VariationType, kept as they are given.
/// Which numbers count depends on the variation: the value for "constant" and "equation_of_state", the points
/// over the independent variable for "piecewise_linear". The others have no numbers here.
///
/// Points are counted from 0. An index outside 0 to pointCount() - 1 stops the process. A reference to a
/// point holds until a point is added or removed or the whole property is assigned to.
class NEREOFILEIO_EXPORT MaterialProperty {
public:
    MaterialProperty();                                 ///< constant zero, without a type
    explicit MaterialProperty(const std::string& type); ///< constant zero
    MaterialProperty(const MaterialProperty& other);
    MaterialProperty& operator=(const MaterialProperty& other);
    MaterialProperty(MaterialProperty&& other) noexcept;
    MaterialProperty& operator=(MaterialProperty&& other) noexcept;
    ~MaterialProperty();

    std::string type() const; ///< "density", or empty

    /// The field-variable code of the type. Stops the process when the type is no name of Clt::PropertyType.
    int typeCode() const;

    std::string variationType() const; ///< "constant" until set
    void setVariationType(const std::string& variationType);

    /// The solver's code of the variation, also when it has its older name; -1 when it is no name of
    /// Clt::VariationType.
    int variationCode() const;

    double value() const;
    void setValue(double value);

    int independentVariable() const; ///< the field-variable code of the points' x; kNone until set
    void setIndependentVariable(int code);

    void addPoint(const Point& point); ///< at the end
    void addPoint(double x, double y);
    void clearPoints();
    Point& point(int index);
    const Point& point(int index) const;
    int pointCount() const;
    void removePoint(int index);

    /// Everything is compared, numbers exactly: a property that holds a NaN doesn't even equal its copy.
    friend NEREOFILEIO_EXPORT bool operator==(const MaterialProperty& left, const MaterialProperty& right);
    friend NEREOFILEIO_EXPORT bool operator!=(const MaterialProperty& left, const MaterialProperty& right);

private:
    friend class Material; // gives its properties their types
    friend class MaterialDatabaseFileXmlReader;

    void giveBackRoom(); // that points were to be added to

    QString type_;
    QString variationType_;
    double value_ = 0.0;
    std::vector<Point> points_;
    int independentVariable_;
};

} // namespace Nereo::Io
