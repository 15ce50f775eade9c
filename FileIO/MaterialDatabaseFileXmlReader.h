#pragma once

#include "Reader.h"

#include <QXmlStreamReader>

namespace Nereo::Io {

class Material;
class MaterialDatabaseFile;
class MaterialProperty;

/// Reads the materials from every "material_database" element, wherever it stands in the document, and
/// replaces those of the database.
///
/// Every element may come in any order and any number of times: the last one counts, and points add up.
class NEREOFILEIO_EXPORT MaterialDatabaseFileXmlReader : public Reader<QXmlStreamReader> {
public:
    explicit MaterialDatabaseFileXmlReader(MaterialDatabaseFile& database);

    bool read(QXmlStreamReader& xml) override; ///< true; what failed is the stream's error

private:
    void readDatabase(QXmlStreamReader& xml);
    void readMaterial(QXmlStreamReader& xml);
    void readMaterialElement(QXmlStreamReader& xml, Material& material);
    void readPropertyOf(QXmlStreamReader& xml, Material& material);
    void readProperty(QXmlStreamReader& xml, MaterialProperty& property);
    void readPropertyElement(QXmlStreamReader& xml, MaterialProperty& property);
    void readPoint(QXmlStreamReader& xml, MaterialProperty& property);

    MaterialDatabaseFile* database_;
};

} // namespace Nereo::Io
