#pragma once

#include "Reader.h"

#include <QTextStream>

namespace Nereo::Io {

class Nereo2ConfigFile;

/// Reads a line for each setting: the key, and the rest of the line as the value with its white space
/// simplified.
class NEREOFILEIO_EXPORT Nereo2ConfigFileTextReader : public Reader<QTextStream> {
public:
    explicit Nereo2ConfigFileTextReader(Nereo2ConfigFile& config);

    bool read(QTextStream& in) override;

private:
    Nereo2ConfigFile* config_;
};

} // namespace Nereo::Io
