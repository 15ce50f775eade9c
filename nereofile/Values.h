#pragma once

#include <NereoInspection/Outline.h>

#include <QHash>
#include <QString>

#include <vector>

namespace Nereo::Tool {

/// A value as the file has it: of a number what stands there without the blanks around it, of a text what a
/// load gives, of a field of results how many values it has.
QString textOf(const Inspection::Item& item);

/// The values of a file by their addresses, each once: the last one of an address counts, the place is that
/// of the first.
class Values {
public:
    struct Value {
        QString address;
        QString text;
    };

    void add(const Inspection::Item& item);

    std::vector<Value>::const_iterator begin() const { return values_.begin(); }
    std::vector<Value>::const_iterator end() const { return values_.end(); }

private:
    std::vector<Value> values_;
    QHash<QString, std::size_t> places_;
};

} // namespace Nereo::Tool
