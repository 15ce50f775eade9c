#pragma once

#include "NodePlaces.h"
#include "ResultsPair.h"

#include <vector>

namespace Nereo::Inspection {

/// Compares two results files whose nodes come in any order, as many fields and nodes at a time as there may
/// be memory for; both files are read each time.
class ScatteredRecords {
public:
    explicit ScatteredRecords(ResultsPair& pair);

    /// False if the memory doesn't suffice, which then is noted.
    bool compare();

private:
    /// What is compared at a time.
    struct Part {
        std::size_t firstField;
        std::size_t fieldCount;
        int firstPlace;
        int placeCount;
    };

    NodePlaces findPlaces();
    void addNodes(const ResultsSide& side, std::vector<int>& nodes);
    bool divide();
    void expectReadings();

    template <class Use>
    void forEachPart(std::size_t firstField, Use use);
    void compareBatch(std::size_t firstField);
    void read(const ResultsSide& side, int ComparedField::*column, const Part& part,
              std::vector<double>& values);
    void comparePart(const Part& part);

    ResultsPair& pair_;
    NodePlaces places_;
    std::size_t fieldsAtOnce_ = 0;
    int placesAtOnce_ = 0;
    std::vector<double> a_; ///< the values of a part, field by field
    std::vector<double> b_;
};

} // namespace Nereo::Inspection
