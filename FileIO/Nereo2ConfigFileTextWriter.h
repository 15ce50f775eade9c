#pragma once

#include "Writer.h"

#include <QTextStream>

namespace Nereo::Io {

class Nereo2ConfigFile;

/// Writes a line for each setting that has a text: the key, a blank and the value.
class NEREOFILEIO_EXPORT Nereo2ConfigFileTextWriter : public Writer<QTextStream> {
public:
    explicit Nereo2ConfigFileTextWriter(const Nereo2ConfigFile& config);

    void write(QTextStream& out) override;

private:
    const Nereo2ConfigFile* config_;
};

} // namespace Nereo::Io
