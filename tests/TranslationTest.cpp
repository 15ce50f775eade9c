#include "support/OwnProcess.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/MaterialType.h>
#include <NereoFileIO/PropertyType.h>
#include <NereoFileIO/VariationType.h>
#include <NereoInspection/Check.h>

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QFile>
#include <QTranslator>
#include <QXmlStreamReader>

#include <map>
#include <set>
#include <thread>
#include <tuple>
#include <vector>

namespace Clt {
namespace {

using ::testing::Each;
using ::testing::SizeIs;

/// What an application does to have its texts in German.
class GermanApplication {
public:
    GermanApplication() { EXPECT_TRUE(german_.load("NereoFileIO_de.qm", NEREO_COMPILED_TRANSLATIONS_DIR)); }

    void speakGerman() { EXPECT_TRUE(QCoreApplication::installTranslator(&german_)); }
    void speakEnglish() { EXPECT_TRUE(QCoreApplication::removeTranslator(&german_)); }

private:
    int argumentCount_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_ {argumentCount_, arguments_};
    QTranslator german_;
};

/// Translates nothing and records what it was asked for.
class RecordingTranslator : public QTranslator {
public:
    using Request = std::tuple<std::string, std::string, const char*, int>;

    QString translate(const char* context, const char* text, const char* disambiguation, int n) const override
    {
        requests.emplace_back(context, text, disambiguation, n);
        return {};
    }
    bool isEmpty() const override { return false; }

    mutable std::vector<Request> requests;
};

// Display names are translated once for the process, so each of these tests needs one of its own.

TEST(TranslationDeathTest, GivesDisplayNamesInGerman)
{
    inAProcessOfItsOwn([] {
        GermanApplication application;
        application.speakGerman();

        EXPECT_EQ(MaterialType::HeatSink.displayName(), "Kühlkörper");
        EXPECT_EQ(MaterialType::InternalFan.displayName(), "Interner Lüfter/Interne Pumpe");
        EXPECT_EQ(PropertyType::Density.displayName(), "Dichte");
        EXPECT_EQ(PropertyType::Solar.displayName(), "Sonneneinstrahlung");
        EXPECT_EQ(VariationType::PiecewiseLinear.displayName(), "Stückweise linear");
        EXPECT_EQ(VariationType::FirstOrderPolymer.displayName(), "Polymer 1. Ordnung");
    });
}

TEST(TranslationDeathTest, FindsTypesByTheirGermanDisplayNamesOnly)
{
    inAProcessOfItsOwn([] {
        GermanApplication application;
        application.speakGerman();

        EXPECT_EQ(MaterialType::fromDisplayName("Festkörper"), MaterialType::Solid);
        EXPECT_FALSE(MaterialType::fromDisplayName("Solid").isValid());
        EXPECT_EQ(PropertyType::fromDisplayName("Wandrauheit"), PropertyType::Roughness);
        EXPECT_EQ(PropertyType::fromDisplayName("Antriebsmoment"), PropertyType::Torque); // the first of two
        EXPECT_FALSE(PropertyType::fromDisplayName("Wall roughness").isValid());
        EXPECT_EQ(VariationType::fromDisplayName("Lüfterkennlinie"), VariationType::FanCurve);
        EXPECT_FALSE(VariationType::fromDisplayName("Fan Curve").isValid());
    });
}

TEST(TranslationDeathTest, LeavesNamesInFilesAlone)
{
    inAProcessOfItsOwn([] {
        GermanApplication application;
        application.speakGerman();

        EXPECT_EQ(MaterialType::fromDisplayName("Festkörper").name(), "solid");
        EXPECT_EQ(MaterialType::fromName("solid").displayName(), "Festkörper");
        EXPECT_EQ(PropertyType::fromDisplayName("Wandrauheit").name(), "roughness");
        EXPECT_EQ(VariationType::fromDisplayName("Lüfterkennlinie").name(), "fan_curve");
    });
}

TEST(TranslationDeathTest, ListsMaterialTypesInEnglishUntilOneIsAskedFor)
{
    inAProcessOfItsOwn([] {
        GermanApplication application;
        application.speakGerman();

        EXPECT_EQ(MaterialType::displayNames()[1], "Solid");
        EXPECT_EQ(MaterialType::displayNames()[1], "Solid"); // to list them doesn't translate them
        EXPECT_EQ(MaterialType::Fluid.displayName(), "Fluid");
        EXPECT_EQ(MaterialType::displayNames()[1], "Festkörper");
        EXPECT_THAT(MaterialType::displayNames(), SizeIs(15));
    });
}

TEST(TranslationDeathTest, ListsMaterialTypesInEnglishUntilOneIsLookedUp)
{
    inAProcessOfItsOwn([] {
        GermanApplication application;
        application.speakGerman();

        EXPECT_EQ(MaterialType::displayNames()[14], "Heat Sink");
        EXPECT_FALSE(MaterialType::fromDisplayName("no such name").isValid());
        EXPECT_EQ(MaterialType::displayNames()[14], "Kühlkörper");
    });
}

TEST(TranslationDeathTest, KeepsTheFirstLanguageOfMaterialAndPropertyTypes)
{
    inAProcessOfItsOwn([] {
        GermanApplication application;
        EXPECT_EQ(MaterialType::Solid.displayName(), "Solid");
        EXPECT_EQ(PropertyType::Density.displayName(), "Density");

        application.speakGerman();
        EXPECT_EQ(MaterialType::Solid.displayName(), "Solid");
        EXPECT_EQ(MaterialType::HeatSink.displayName(), "Heat Sink"); // all were translated together
        EXPECT_EQ(MaterialType::displayNames()[1], "Solid");
        EXPECT_FALSE(MaterialType::fromDisplayName("Festkörper").isValid());
        EXPECT_EQ(PropertyType::Solar.displayName(), "Solar");
        EXPECT_FALSE(PropertyType::fromDisplayName("Dichte").isValid());
    });
}

TEST(TranslationDeathTest, KeepsGermanWhenTheTranslatorIsRemoved)
{
    inAProcessOfItsOwn([] {
        GermanApplication application;
        application.speakGerman();
        EXPECT_TRUE(MaterialType::fromDisplayName("Festkörper").isValid());
        EXPECT_TRUE(PropertyType::fromDisplayName("Dichte").isValid());

        application.speakEnglish();
        EXPECT_EQ(MaterialType::HeatSink.displayName(), "Kühlkörper");
        EXPECT_EQ(PropertyType::Roughness.displayName(), "Wandrauheit");
    });
}

TEST(TranslationDeathTest, FollowsTheLanguageInVariationTypes)
{
    inAProcessOfItsOwn([] {
        GermanApplication application;
        EXPECT_EQ(VariationType::TimeTable.displayName(), "Table");
        EXPECT_EQ(VariationType::fromDisplayName("Table"), VariationType::TimeTable);

        application.speakGerman();
        EXPECT_EQ(VariationType::TimeTable.displayName(), "Tabelle");
        EXPECT_EQ(VariationType::fromDisplayName("Tabelle"), VariationType::TimeTable);
        EXPECT_FALSE(VariationType::fromDisplayName("Table").isValid());

        application.speakEnglish();
        EXPECT_EQ(VariationType::TimeTable.displayName(), "Table");
        EXPECT_FALSE(VariationType::fromDisplayName("Tabelle").isValid());
    });
}

TEST(TranslationDeathTest, AsksTranslatorsByTheNameOfTheClass)
{
    inAProcessOfItsOwn([] {
        const GermanApplication application;
        RecordingTranslator translator;
        QCoreApplication::installTranslator(&translator);
        translator.requests.clear();
        using Request = RecordingTranslator::Request;

        EXPECT_EQ(MaterialType::Solid.displayName(), "Solid");
        EXPECT_EQ(MaterialType::Fluid.displayName(), "Fluid");
        ASSERT_THAT(translator.requests, SizeIs(15)); // once for each type
        EXPECT_EQ(translator.requests[3], Request("Clt::MaterialType", "Internal Fan/Pump", nullptr, -1));
        translator.requests.clear();

        EXPECT_EQ(PropertyType::Density.displayName(), "Density");
        EXPECT_EQ(PropertyType::fromDisplayName("Solar"), PropertyType::Solar);
        ASSERT_THAT(translator.requests, SizeIs(70));
        EXPECT_EQ(translator.requests[5], Request("Clt::PropertyType", "Cp/Cv", nullptr, -1));
        translator.requests.clear();

        EXPECT_EQ(VariationType::FanCurve.displayName(), "Fan Curve");
        EXPECT_EQ(VariationType::FanCurve.displayName(), "Fan Curve");
        EXPECT_THAT(translator.requests, Each(Request("Clt::VariationType", "Fan Curve", nullptr, -1)));
        EXPECT_THAT(translator.requests, SizeIs(2));
    });
}

TEST(TranslationDeathTest, TranslatesOnceWhileManyThreadsAsk)
{
    inAProcessOfItsOwn([] {
        GermanApplication application;
        application.speakGerman();

        std::vector<std::thread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([] {
                const QString listed = MaterialType::displayNames()[1];
                EXPECT_TRUE(listed == "Solid" || listed == "Festkörper");
                EXPECT_EQ(MaterialType::Solid.displayName(), "Festkörper");
                EXPECT_EQ(MaterialType::displayNames()[1], "Festkörper");
                EXPECT_EQ(PropertyType::fromDisplayName("Dichte"), PropertyType::Density);
                EXPECT_EQ(VariationType::Spring.displayName(), "Feder");
            });
        }
        for (std::thread& thread : threads)
            thread.join();
    });
}

TEST(TranslationDeathTest, SaysWhatIsFoundInTheLanguageOfTheMoment)
{
    inAProcessOfItsOwn([] {
        const TemporaryFolder folder;
        const std::string path = folder.write("file.cfg", "MaxIter x\nMaxItr 5\n");
        const auto found = [&](std::size_t index) {
            return Nereo::Inspection::check(path).findings.at(index).message;
        };
        GermanApplication application;
        EXPECT_EQ(found(0), "\"x\" is not a whole number; it is read as 0");

        application.speakGerman();
        EXPECT_EQ(found(0), "„x“ ist keine ganze Zahl; gelesen wird 0");
        EXPECT_EQ(found(1),
                  "„MaxItr“ ist keine Einstellung; das Laden wirft eine Ausnahme; Ist „MaxIter“ gemeint?");
    });
}

using Texts = std::map<std::string, std::set<std::string>>; // by their contexts

Texts allTexts()
{
    Texts texts;
#define MATERIAL_TYPE(object, name, displayName) texts["Clt::MaterialType"].insert(displayName);
#include <NereoFileIO/MaterialType.def>
#define PROPERTY_TYPE(object, name, displayName, unitCategory, code)                                         \
    texts["Clt::PropertyType"].insert(displayName);
#include <NereoFileIO/PropertyType.def>
#define VARIATION_TYPE(object, name, displayName, code, alias)                                               \
    texts["Clt::VariationType"].insert(displayName);
#include <NereoFileIO/VariationType.def>
#define FINDING(rule, code, severity, effect, kinds, expected, message)                                      \
    texts["Nereo::Inspection"].insert({expected, message});
#include <Inspection/Rules.def>
    texts["Nereo::Inspection"].insert({
        "did you mean \"%1\"?",
        "a section's title",
        "an empty line",
        "\"Version\" and the version",
        "the program that writes the file",
        "the name of the job",
        "a load takes the next line for it, and so on for those below",
        "a load takes the next line for it:",
        "so are those behind it",
        "those behind it are read as",
        "the version is read as %1",
        "a line is missing before it, and the first title with what stands up to the next one is ignored",
        "what is left of it is read for the values behind it:",
        "a writer puts the section \"%1\" here",
        "a load leaves out bytes 0D of characters, the first in line %1",
        "a load stops the process",
        "a load throws",
        "what a load doesn't find is read as 0",
    });
    texts["Nereo::Inspection"].erase("");
    return texts;
}

/// A file of translations: the texts that it knows, and their translations where they are finished.
struct TranslationFile {
    explicit TranslationFile(const std::string& name)
    {
        QFile file(QString::fromStdString(NEREO_TRANSLATIONS_DIR "/" + name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        QXmlStreamReader xml(&file);
        std::string context;
        while (!xml.atEnd()) {
            xml.readNext();
            if (!xml.isStartElement())
                continue;
            if (xml.name() == "name")
                context = xml.readElementText().toStdString();
            else if (xml.name() == "source")
                sources[context].insert(xml.readElementText().toStdString());
            else if (xml.name() == "translation" && !xml.attributes().hasAttribute("type"))
                translations[context].insert(xml.readElementText().toStdString());
        }
        EXPECT_FALSE(xml.hasError()) << name;
    }

    Texts sources;
    Texts translations;
};

TEST(Translation, HasAllTexts)
{
    const Texts expected = allTexts();
    EXPECT_THAT(expected.at("Clt::MaterialType"), SizeIs(15));
    EXPECT_THAT(expected.at("Clt::PropertyType"), SizeIs(69)); // two properties share one
    EXPECT_THAT(expected.at("Clt::VariationType"), SizeIs(55));

    for (const char* name : {"NereoFileIO.ts", "NereoFileIO_de.ts"})
        EXPECT_EQ(TranslationFile(name).sources, expected)
            << name << ": build the target nereo_update_translations";
}

TEST(Translation, IsFinishedAndGivesEachTextOneOfItsOwn)
{
    const TranslationFile german("NereoFileIO_de.ts");
    for (const auto& [context, sources] : german.sources) {
        ASSERT_EQ(german.translations.count(context), 1u) << context;
        EXPECT_EQ(german.translations.at(context).size(), sources.size()) << context;
        EXPECT_EQ(german.translations.at(context).count(""), 0u) << context;
    }
}

} // namespace
} // namespace Clt
