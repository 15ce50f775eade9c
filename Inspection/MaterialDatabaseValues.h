#pragma once

#include <FileIO/MaterialDatabaseXml.h>
#include <NereoInspection/Outline.h>

#include <array>
#include <iterator>

/// The elements of a material database that hold values, in the order in which a writer writes them.

namespace Nereo::Inspection {

/// An element that holds one value.
struct ValueElement {
    const char* name;
    Item::Type type;
};

/// What is to be read into one table of such elements, by their numbers in it.
enum MaterialValue { Name, Id, FirstReference };
enum PropertyValue { Variation, Value, Variable };
enum PointValue { X, Y };

inline constexpr auto materialValues = [] {
    std::array<ValueElement, FirstReference + std::size(Io::materialReferenceValues)> values {};
    values[Name] = {Io::MaterialXml::name, Item::Type::Text};
    values[Id] = {Io::MaterialXml::id, Item::Type::Integer};
    for (std::size_t i = 0; i < std::size(Io::materialReferenceValues); ++i)
        values[FirstReference + i] = {Io::materialReferenceValues[i].element, Item::Type::Number};
    return values;
}();

inline constexpr std::array<ValueElement, 3> propertyValues {
    {
     {Io::MaterialXml::variationType, Item::Type::Text},
     {Io::MaterialXml::value, Item::Type::Number},
     {Io::MaterialXml::independentVariable, Item::Type::Text},
     }
};

inline constexpr std::array<ValueElement, 2> pointValues {
    {
     {Io::MaterialXml::x, Item::Type::Number},
     {Io::MaterialXml::y, Item::Type::Number},
     }
};

inline constexpr int noValue = -1;

template <class Text, std::size_t size>
int indexOf(const Text& name, const std::array<ValueElement, size>& elements)
{
    for (std::size_t i = 0; i < size; ++i) {
        if (name == QLatin1String(elements[i].name))
            return int(i);
    }
    return noValue;
}

} // namespace Nereo::Inspection
