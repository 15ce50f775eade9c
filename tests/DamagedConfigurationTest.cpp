#include "support/Bytes.h"
#include "support/DamagedLoads.h"

#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoUtility/StringConversion.h>

#include <QBuffer>
#include <QTextStream>
#include <QXmlStreamReader>

#include <algorithm>
#include <sstream>
#include <utility>

namespace Nereo::Io {
namespace {

using ExpectedConfiguration = ExpectedLoad<Nereo2ConfigFile>;

void set(Nereo2ConfigFile& config, const QString& key, const QString& value)
{
    config.setting(Util::toStdString(key)).setValueFromString(Util::toStdString(value));
}

/// Follows the XML token by token; only how deep a token stands tells what it means.
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
            follow(xml);
        }
        if (xml.hasError() && !key_.isEmpty())
            set(load_.content, key_, text_); // what there is of it
        load_.result = !xml.hasError();
    }

    const ExpectedConfiguration& load() const { return load_; }

private:
    void follow(QXmlStreamReader& xml)
    {
        switch (xml.tokenType()) {
        case QXmlStreamReader::StartElement:
            return start(xml);
        case QXmlStreamReader::EndElement:
            return end();
        case QXmlStreamReader::Characters:
        case QXmlStreamReader::EntityReference:
            text_ += xml.text();
            return;
        default:
            return;
        }
    }

    void start(QXmlStreamReader& xml)
    {
        if (!key_.isEmpty())
            return xml.raiseError("an element in a setting");
        ++depth_;
        const QString name = xml.name().toString();
        if (depthOfSettings_ == 0 && name == "Nereo2Config") {
            depthOfSettings_ = depth_ + 1;
            const QString version = xml.attributes().value("Version").toString();
            if (!version.isEmpty())
                load_.content.setVersion(Util::Version(version));
        } else if (depth_ == depthOfSettings_ && load_.content.contains(Util::toStdString(name))) {
            key_ = name;
            text_.clear();
        }
    }

    void end()
    {
        if (!key_.isEmpty())
            set(load_.content, std::exchange(key_, QString()), text_);
        if (depth_ < depthOfSettings_)
            depthOfSettings_ = 0;
        --depth_;
    }

    ExpectedConfiguration load_;
    int depth_ = 0;
    int depthOfSettings_ = 0; // while within an element Nereo2Config
    QString key_;             // while within an element of a setting
    QString text_;
};

ExpectedConfiguration expectedFromXml(const std::string& bytes)
{
    return ExpectedFromXml(bytes).load();
}

/// A word, and the rest of its line.
ExpectedConfiguration expectedFromText(const std::string& bytes)
{
    QTextStream in(QByteArray::fromStdString(bytes));
    in.setCodec("UTF-8");
    const QString text = in.readAll();

    ExpectedConfiguration expected;
    int place = 0;
    const auto skip = [&](auto condition) {
        const int begin = place;
        while (place < text.size() && condition(text[place]))
            ++place;
        return text.mid(begin, place - begin);
    };
    while (place < text.size()) {
        skip([](QChar character) { return character.isSpace(); });
        const QString key = skip([](QChar character) { return !character.isSpace(); });
        const QString value = skip([](QChar character) { return character != '\n'; });
        ++place;
        if (!expected.content.contains(Util::toStdString(key))) {
            expected.exception = "invalid map<K, T> key";
            break;
        }
        set(expected.content, key, value.simplified());
    }
    return expected;
}

TEST(DamagedConfigurationDeathTest, LoadsFromXmlWhatTheDescriptionSays)
{
    DamagedLoads<Nereo2ConfigFile> loads("xml");
    for (const char* path :
         {NEREO_SAMPLES_DIR "/NEREO2_default.xml", NEREO_GOLDEN_DIR "/new-configuration.xml"})
        loads.expect(damaged(readBytes(path)), expectedFromXml);
}

TEST(DamagedConfigurationDeathTest, LoadsFromTextWhatTheDescriptionSays)
{
    DamagedLoads<Nereo2ConfigFile> loads("cfg");
    for (const char* path : {NEREO_SAMPLES_DIR "/solver.cfg", NEREO_GOLDEN_DIR "/new-configuration.cfg"})
        loads.expect(damaged(readBytes(path)), expectedFromText);
}

TEST(DamagedConfiguration, HoldsFromACutDocumentTheSettingsThatAreWhole)
{
    const std::string whole = "<Nereo2Config><MaxIter>1</MaxIter><AwsRegion>x</AwsRegion>"
                              "<StopTime>2.5</StopTime></Nereo2Config>\n";
    const struct {
        std::string key;
        std::string byDefault;
        std::string inFile;
    } settings[] = {
        {"MaxIter",   "10000",     "1"  },
        {"AwsRegion", "us-east-1", "x"  },
        {"StopTime",  "1e+20",     "2.5"},
    };
    TemporaryFolder folder;
    for (const auto& [damage, bytes] : cutAnywhere(whole)) {
        SCOPED_TRACE(damage);
        Nereo2ConfigFile config;
        EXPECT_EQ(config.loadFrom(folder.write("cut.xml", bytes)), bytes.size() >= whole.size() - 1);
        for (const auto& [key, byDefault, inFile] : settings) {
            const bool isWhole = bytes.find("</" + key + '>') != std::string::npos;
            const bool hasBegun = bytes.find('<' + key + '>') != std::string::npos;
            if (isWhole || !hasBegun) {
                EXPECT_EQ(config.setting(key).valueAsString(), isWhole ? inFile : byDefault) << key;
            }
        }
    }
}

TEST(DamagedConfiguration, TakesOfADamagedCommandLineTheOptionsBeforeTheDamage)
{
    const std::string whole = "/opt/solver\njob\n-MaxIter\n500\n-StopTime\n2.5\n-AwsRegion\neu-central-1\n";
    for (const auto& [damage, bytes] : damaged(whole)) {
        SCOPED_TRACE(damage);
        std::vector<std::string> args;
        std::istringstream lines(bytes);
        for (std::string line; std::getline(lines, line);)
            args.push_back(line);

        Nereo2ConfigFile expected;
        bool result = args.size() % 2 == 0;
        for (std::size_t i = 2; result && i < args.size(); i += 2) {
            const std::string key = args[i].substr(std::min<std::size_t>(1, args[i].size()));
            result = args[i].rfind('-', 0) == 0 && expected.contains(key);
            if (result)
                expected.setting(key).setValueFromString(args[i + 1]);
        }
        Nereo2ConfigFile actual;
        const LoadWatch watch(damage);
        EXPECT_EQ(actual.loadFromOptionalCommandLineArguments(args), result);
        expectSameContent(actual, expected);
        EXPECT_EQ(actual.loadFromRequiredCommandLineArguments(args), args.size() >= 2);
    }
}

} // namespace
} // namespace Nereo::Io
