#pragma once

#include "Writer.h"

#include <QXmlStreamWriter>

namespace Nereo::Io {

class Nereo2ConfigFile;

/// Writes one element "Nereo2Config" with the version and a child element for each setting that has a text.
class NEREOFILEIO_EXPORT Nereo2ConfigFileXmlWriter : public Writer<QXmlStreamWriter> {
public:
    explicit Nereo2ConfigFileXmlWriter(const Nereo2ConfigFile& config);

    void write(QXmlStreamWriter& xml) override;

private:
    const Nereo2ConfigFile* config_;
};

} // namespace Nereo::Io
