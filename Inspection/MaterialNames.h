#pragma once

#include "InputFile.h"

#include <QByteArray>
#include <QString>

#include <string_view>
#include <unordered_map>

class QXmlStreamReader;

namespace Nereo::Inspection {

/// How much is kept of the names of a database: no more than the file has bytes, but for names out of
/// entities, of which there are 32 MiB at most. Behind that materials have none.
class NameRoom {
public:
    explicit NameRoom(const InputFile& file);

    /// Whether the name of the next material finds room, which it then takes.
    bool take(const QString& name);

private:
    qint64 bytesLeft_;
};

/// The names of the materials of a database, one after the other.
///
/// They have to be known before the elements that stand before them, and the last of several in a material
/// counts. So the file is read for them alone, and they are kept.
class NEREOINSPECTION_EXPORT MaterialNames {
public:
    explicit MaterialNames(const InputFile& file);
    ~MaterialNames();

    struct Name {
        QString part;            ///< of addresses
        bool isRepeated = false; ///< a material before has it
    };

    /// That of the next material, in the order of the file.
    Name next();

    bool hasDatabase() const { return hasDatabase_; }

    /// What addresses have for a name, from the text of its element.
    static QString nameOf(const QString& text);

    /// The part of addresses for a material: its name, and how many so far have that.
    static QString partOf(const QString& name, int count, int place);

private:
    void readDatabase(QXmlStreamReader& xml);
    void append(const QString& name);

    NameRoom room_;
    QByteArray names_; ///< each behind the other, with a NUL at its end
    int named_ = 0;    ///< how many aren't empty
    int at_ = 0;       ///< the next one
    int place_ = 0;    ///< of the material, from 1
    bool hasDatabase_ = false;
    std::unordered_map<std::string_view, int> counts_; ///< how many were told of each name
};

/// A text that a load keeps, as it comes out of the std::string in which it is given to the object.
QString keptText(const QString& text);

} // namespace Nereo::Inspection
