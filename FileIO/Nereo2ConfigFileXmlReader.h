#pragma once

#include "Reader.h"

#include <QXmlStreamReader>

namespace Nereo::Io {

class Nereo2ConfigFile;

/// Reads the settings from the children of every "Nereo2Config" element, wherever it stands in the document.
class NEREOFILEIO_EXPORT Nereo2ConfigFileXmlReader : public Reader<QXmlStreamReader> {
public:
    explicit Nereo2ConfigFileXmlReader(Nereo2ConfigFile& config);

    bool read(QXmlStreamReader& xml) override; ///< true; what failed is the stream's error

private:
    void readConfiguration(QXmlStreamReader& xml);

    Nereo2ConfigFile* config_;
};

} // namespace Nereo::Io
