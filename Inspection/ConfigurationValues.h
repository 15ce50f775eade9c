#pragma once

#include "Listener.h"

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <QSet>

#include <optional>

namespace Nereo::Inspection {

const QStringList& configurationKeys(); ///< ascending

/// The type of a setting's values; none if there is no such setting.
std::optional<Item::Type> typeOfSetting(const QString& key);

/// What both forms of the configuration have in common: the settings, what a load makes of their texts, and
/// what is to be said of them.
class ConfigurationValues {
public:
    explicit ConfigurationValues(Listener& listener) : listener_(listener) {}

    bool isKey(const QString& name) const;

    /// Whether the setting has a number rather than a text.
    bool isNumber(const QString& key) const;

    /// Whether the setting has stood in the file before, which is remembered.
    bool isRepeated(const QString& key);

    void reportUnknown(Rule rule, const QString& name, const Place& place);

    /// What is wrong with the text that the setting gets, but for the place.
    std::optional<Discovery> faultOf(const QString& key, QStringView text) const;

    void tellItem(const QString& key, const Place& place, qint64 length, const QString& spelling,
                  const QString& text);

private:
    Listener& listener_;
    Io::Nereo2ConfigFile configuration_;
    QSet<QString> met_;
};

} // namespace Nereo::Inspection
