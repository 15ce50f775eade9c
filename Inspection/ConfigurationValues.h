#pragma once

#include "Listener.h"

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <QSet>

namespace Nereo::Inspection {

/// What both forms of the configuration have in common: the settings, what a load makes of their texts, and
/// what is to be said of them.
class ConfigurationValues {
public:
    /// What a load does with a text before a setting gets it.
    using Preparation = QString (*)(QStringView text);
    static QString simplified(QStringView text);
    static QString asItStands(QStringView text);

    explicit ConfigurationValues(Listener& listener) : listener_(listener) {}

    bool isKey(const QString& name) const;

    void unknownKey(Rule rule, const QString& name, const Place& place);

    /// Tells of a setting's value. True if something is wrong with its text.
    bool value(const QString& key, const Place& keyPlace, const Place& place, qint64 length,
               QStringView spelling, Preparation prepare);

private:
    void tellItem(const QString& key, const Place& place, qint64 length, QStringView spelling,
                  const QString& text);

    Listener& listener_;
    Io::Nereo2ConfigFile configuration_;
    QSet<QString> seen_;
};

} // namespace Nereo::Inspection
