#pragma once

#include <Inspection/SeenNames.h>
#include <NereoInspection/FileKind.h>
#include <NereoInspection/Outline.h>

#include <QHash>
#include <QString>

#include <map>
#include <string>
#include <utility>

namespace Nereo::Tool {

class Json;
class Output;
class Values;

/// What a file says that is no results file: the most important values, as many as find room on a screen, and
/// how many there are. It takes no more for a file of millions of values than a few bytes for each.
class ValuesInfo {
public:
    explicit ValuesInfo(Inspection::FileKind kind);

    void add(const Inspection::Item& item); ///< the last one of an address counts
    void writeText(Output& output, const std::string& name);

private:
    using Place = std::pair<int, qint64>; ///< the rank, and the place in the file

    struct Shown {
        QString address;
        QString text;
    };

    Inspection::FileKind kind_;
    QString addressOfVersion_;
    QString version_;
    Inspection::NameCount addresses_;
    qint64 number_ = 0; ///< of the value that comes next
    std::map<Place, Shown> shown_;
    QHash<QString, Place> places_; ///< of those that are shown
};

/// The members of an object, all values among them.
void writeJson(Json& json, Inspection::FileKind kind, const Values& values);

} // namespace Nereo::Tool
