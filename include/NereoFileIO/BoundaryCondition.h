#pragma once

#include <NereoFileIO/Export.h>

#include <QList>

namespace Nereo::Io {

/// One condition on a surface or node set of the mesh: the quantity that it sets, where, and to which value;
/// with further values where that kind of condition needs them, and a curve that scales the value over time.
///
/// The values are in the units of the file that the condition goes into. Indices of the extra values run
/// from 0 to extraValueCount() - 1; any other index stops the process.
class NEREOFILEIO_EXPORT BoundaryCondition {
public:
    /// A condition that sets the quantity of a FieldVariable or NodeFlag, which can't be changed later. Its
    /// value is 0.0, and it has no entity (0), no time curve (-1) and no extra values.
    explicit BoundaryCondition(int kCode);
    BoundaryCondition(); ///< of code 0
    BoundaryCondition(const BoundaryCondition& other);
    BoundaryCondition& operator=(const BoundaryCondition& other);
    BoundaryCondition(BoundaryCondition&& other) noexcept;
    BoundaryCondition& operator=(BoundaryCondition&& other) noexcept;
    ~BoundaryCondition();

    int kCode() const;

    /// The number of the surface or node set.
    int entityId() const;
    void setEntityId(int entityId);

    /// The number of the time curve, from 1; 0 and below mean that there is none.
    int timeCurveId() const;
    void setTimeCurveId(int timeCurveId);

    int timeCurveFlag() const; ///< -1, all bits set, with a time curve, else 0

    double value() const;
    void setValue(double value);

    int extraValueCount() const;
    double extraValue(int index) const;
    void addExtraValue(double value); ///< as the last one
    void setExtraValue(int index, double value);
    void removeExtraValue(int index); ///< later values move down by one
    void clearExtraValues();

    /// Compares everything, numbers by ==: a condition whose value is NaN isn't even equal to itself. A NaN
    /// among the extra values does the same unless both lists are copies of one, unchanged since.
    bool operator==(const BoundaryCondition& other) const;
    bool operator!=(const BoundaryCondition& other) const;

private:
    int kCode_;
    int entityId_ = 0;
    int timeCurveId_ = -1;
    double value_ = 0.0;
    QList<double> extraValues_;
};

/// Makes conditions keys of QHash and QSet. The extra values, and digits of the value after the sixth, take
/// no part.
NEREOFILEIO_EXPORT uint qHash(const BoundaryCondition& condition);

} // namespace Nereo::Io
