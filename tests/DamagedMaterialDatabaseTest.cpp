#include "support/Bytes.h"
#include "support/DamagedLoads.h"
#include "support/SameContent.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/PropertyType.h>

#include <QBuffer>
#include <QXmlStreamReader>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Nereo::Io {
namespace {

/// Follows the XML token by token. What an element means is said by its name and the element it stands in;
/// what a broken file leaves open is closed at the break.
class ExpectedFromXml {
public:
    explicit ExpectedFromXml(const std::string& bytes)
    {
        QByteArray data = QByteArray::fromStdString(bytes);
        QBuffer device(&data);
        device.open(QIODevice::ReadOnly | QIODevice::Text);
        QXmlStreamReader xml(&device);
        while (!xml.hasError() && !xml.isEndDocument()) {
            xml.readNext();
            if (xml.isStartElement())
                start(xml);
            else if (xml.isEndElement())
                end();
            else if (xml.isCharacters() || xml.isEntityReference())
                text_ += xml.text();
        }
        while (!open_.empty())
            end();
        load_.result = !xml.hasError();
    }

    const ExpectedLoad<MaterialDatabaseFile>& load() const { return load_; }

private:
    enum class Element { Outside, Database, Material, Property, Point, Text, Skipped };

    struct OpenElement {
        Element element;
        QString name;
    };

    Element meaning(const QString& name) const
    {
        const QStringList textsOfMaterial {"name",
                                           "id",
                                           "ref_pressure",
                                           "ref_temperature",
                                           "ref_compressibility",
                                           "vapor_pressure",
                                           "gas_constant",
                                           "diffusion_coefficient"};
        const QStringList textsOfProperty {"variation_type", "value", "independent_variable"};
        switch (open_.empty() ? Element::Outside : open_.back().element) {
        case Element::Outside:
            return name == "material_database" ? Element::Database : Element::Outside;
        case Element::Database:
            return name == "material" ? Element::Material : Element::Skipped;
        case Element::Material:
            return name == "property"            ? Element::Property
                : textsOfMaterial.contains(name) ? Element::Text
                                                 : Element::Skipped;
        case Element::Property:
            return name == "point"               ? Element::Point
                : textsOfProperty.contains(name) ? Element::Text
                                                 : Element::Skipped;
        case Element::Point:
            return name == "x" || name == "y" ? Element::Text : Element::Skipped;
        default:
            return Element::Skipped;
        }
    }

    void start(QXmlStreamReader& xml)
    {
        if (!open_.empty() && open_.back().element == Element::Text)
            return xml.raiseError("an element in a text");
        const QString name = xml.name().toString();
        const Element element = meaning(name);
        const auto attribute = [&xml](const char* name) {
            return xml.attributes().value(QLatin1String(name)).toString();
        };
        switch (element) {
        case Element::Database:
            if (!attribute("version").isEmpty())
                load_.content.setVersion(Util::Version(attribute("version")));
            break;
        case Element::Material:
            material_ = Material(attribute("type").toStdString());
            break;
        case Element::Property:
            if (!Clt::PropertyType::fromName(attribute("type")).isValid())
                return xml.raiseError("an unknown property");
            property_ = &material_.property(attribute("type").toStdString());
            break;
        case Element::Point:
            point_ = Point();
            break;
        default:
            text_.clear();
        }
        open_.push_back({element, name});
    }

    void end()
    {
        const auto [element, name] = open_.back();
        open_.pop_back();
        if (element == Element::Material)
            load_.content.add(material_);
        else if (element == Element::Point)
            property_->addPoint(point_);
        else if (element == Element::Text)
            setters_.at(name)();
    }

    ExpectedLoad<MaterialDatabaseFile> load_;
    std::vector<OpenElement> open_;
    Material material_;
    MaterialProperty* property_ = nullptr;
    Point point_;
    QString text_;

    /// What the end of an element with a text does with it.
    const std::map<QString, std::function<void()>> setters_ {
        {"name",                  [this] { material_.setName(text_.toStdString()); }                },
        {"id",                    [this] { material_.setId(text_.toInt()); }                        },
        {"ref_pressure",          [this] { material_.setRefPressure(text_.toDouble()); }            },
        {"ref_temperature",       [this] { material_.setRefTemperature(text_.toDouble()); }         },
        {"ref_compressibility",   [this] { material_.setRefCompressibility(text_.toDouble()); }     },
        {"vapor_pressure",        [this] { material_.setVaporPressure(text_.toDouble()); }          },
        {"gas_constant",          [this] { material_.setGasConstant(text_.toDouble()); }            },
        {"diffusion_coefficient", [this] { material_.setDiffusionCoefficient(text_.toDouble()); }   },
        {"variation_type",        [this] { property_->setVariationType(text_.toStdString()); }      },
        {"value",                 [this] { property_->setValue(text_.toDouble()); }                 },
        {"independent_variable",
         [this] { property_->setIndependentVariable(CodeNameTable::instance().codeForName(text_)); }},
        {"x",                     [this] { point_.setX(text_.toDouble()); }                         },
        {"y",                     [this] { point_.setY(text_.toDouble()); }                         },
    };
};

ExpectedLoad<MaterialDatabaseFile> expectedFromXml(const std::string& bytes)
{
    return ExpectedFromXml(bytes).load();
}

TEST(DamagedMaterialDatabaseDeathTest, LoadsWhatTheDescriptionSays)
{
    DamagedLoads<MaterialDatabaseFile> loads("xml");
    for (const char* path : {NEREO_SAMPLES_DIR "/materials.xml", NEREO_GOLDEN_DIR "/materials.xml"})
        loads.expect(damaged(readBytes(path)), expectedFromXml);
}

TEST(DamagedMaterialDatabase, HoldsOfACutFileTheMaterialsThatHaveBegun)
{
    const std::string whole = "<material_database><material type=\"solid\"><name>a</name></material>"
                              "<material type=\"solid\"><name>b</name></material></material_database>\n";
    TemporaryFolder folder;
    for (const auto& [damage, bytes] : cutAnywhere(whole)) {
        SCOPED_TRACE(damage);
        MaterialDatabaseFile database;
        EXPECT_EQ(database.loadFrom(folder.write("cut.xml", bytes)), bytes.size() >= whole.size() - 1);
        int begun = 0;
        for (std::size_t at = 0; (at = bytes.find("\"solid\">", at)) != std::string::npos; ++at)
            ++begun;
        EXPECT_EQ(database.count(), begun);
        for (const std::string name : {"a", "b"}) {
            const bool isWhole = bytes.find("<name>" + name + "</name>") != std::string::npos;
            const bool hasBegun = bytes.find("<name>" + name) != std::string::npos;
            if (isWhole || !hasBegun) {
                EXPECT_EQ(database.contains(name), isWhole) << name;
            }
        }
    }
}

} // namespace
} // namespace Nereo::Io
