#pragma once

#include "Listener.h"
#include "XmlFile.h"

namespace Nereo::Inspection {

/// Whether a text is four whole numbers joined by dots.
NEREOINSPECTION_EXPORT bool isVersion(const QString& text);

/// Tells of a version's text that isn't four whole numbers joined by dots. True if it isn't. An empty one is
/// ignored where the load of the kind does so, and read as zeros elsewhere.
NEREOINSPECTION_EXPORT bool checkVersion(const QString& text, bool isEmptyIgnored, const Place& place,
                                         const QString& address, Listener& listener);

/// The version of a document, which stands in an attribute of its root. Of several roots the last one counts.
class DocumentVersion {
public:
    DocumentVersion(const char* attribute, Rule repetition) : name_(attribute), repetition_(repetition) {}

    /// Tells of the version that the current element has, if it has one.
    void read(XmlFile& xml, Listener& listener);

private:
    QLatin1String name_;
    Rule repetition_;
    bool isRead_ = false;
};

} // namespace Nereo::Inspection
