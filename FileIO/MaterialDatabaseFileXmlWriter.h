#pragma once

#include "Writer.h"

#include <QXmlStreamWriter>

namespace Nereo::Io {

class MaterialDatabaseFile;

/// Writes one element "material_database" with the version and a child element for each material.
class NEREOFILEIO_EXPORT MaterialDatabaseFileXmlWriter : public Writer<QXmlStreamWriter> {
public:
    explicit MaterialDatabaseFileXmlWriter(const MaterialDatabaseFile& database);

    void write(QXmlStreamWriter& xml) override;

private:
    const MaterialDatabaseFile* database_;
};

} // namespace Nereo::Io
