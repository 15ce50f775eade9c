#include "ConfigurationConversion.h"

#include "Arguments.h"
#include "InputPath.h"
#include "Messages.h"
#include "Output.h"
#include "Saving.h"

#include <FileIO/FileAccess.h>
#include <FileIO/Nereo2ConfigFileTextReader.h>
#include <FileIO/Nereo2ConfigFileTextWriter.h>
#include <FileIO/Nereo2ConfigFileXmlReader.h>
#include <FileIO/Nereo2ConfigFileXmlWriter.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoInspection/Outline.h>
#include <NereoUtility/StringConversion.h>

#include <QBuffer>
#include <QFileInfo>

#include <stdexcept>

namespace Nereo::Tool {

namespace {

using Inspection::FileKind;
using Inspection::Item;
using Io::Nereo2ConfigFile;

/// What a load made of a value, whatever it was written like.
void assign(Io::Setting& setting, const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Int:
        return setting.setValue(value.toInt());
    case QMetaType::Double:
        return setting.setValue(value.toDouble());
    default:
        return setting.setValueFromString(Util::toStdString(value.toString()));
    }
}

/// Only what the file says: the settings that it leaves out are left out again.
Nereo2ConfigFile settingsOf(const InputPath& input, FileKind kind)
{
    const Nereo2ConfigFile known;
    Nereo2ConfigFile file;
    file.clear();
    outline(input.path(), kind, [&](const Item& item) {
        const std::string key = Util::toStdString(item.address);
        if (item.type == Item::Type::Version) {
            file.setVersion(Util::Version(item.value.toString()));
        } else if (known.contains(key)) {
            file.reset(key);
            assign(file.setting(key), item.value);
        }
    });
    return file;
}

template <class Stream, class Writer>
QByteArray written(const Nereo2ConfigFile& file)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    Stream stream(&buffer);
    Io::configure(stream);
    Writer(file).write(stream);
    Io::finish(stream);
    return buffer.data();
}

template <class Stream, class Reader>
bool read(const QByteArray& bytes, Nereo2ConfigFile& file)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    Stream stream(&buffer);
    Io::configure(stream);
    Reader(file).read(stream);
    return Io::isLoaded(stream);
}

QByteArray bytesOf(const Nereo2ConfigFile& file, bool isXml)
{
    return isXml ? written<QXmlStreamWriter, Io::Nereo2ConfigFileXmlWriter>(file)
                 : written<QTextStream, Io::Nereo2ConfigFileTextWriter>(file);
}

bool load(const QByteArray& bytes, bool isXml, Nereo2ConfigFile& file)
try {
    return isXml ? read<QXmlStreamReader, Io::Nereo2ConfigFileXmlReader>(bytes, file)
                 : read<QTextStream, Io::Nereo2ConfigFileTextReader>(bytes, file);
} catch (const std::out_of_range&) { // of a text that goes on in a line of its own
    return false;
}

/// The first setting of which the bytes don't give the value back; empty where they give all.
std::string firstLost(const Nereo2ConfigFile& file, const QByteArray& bytes, bool isXml)
{
    Nereo2ConfigFile loaded;
    const bool isLoaded = load(bytes, isXml, loaded);
    for (const std::string& key : file.keys()) {
        if (loaded.setting(key).valueAsString() != file.setting(key).valueAsString())
            return key;
    }
    return isLoaded || file.keys().empty() ? std::string() : file.keys().front();
}

} // namespace

ConfigurationConversion::ConfigurationConversion(const Arguments& arguments, const std::string& target)
    : target_(target), isXml_(QFileInfo(Util::toQString(target)).suffix() == QLatin1String("xml"))
{
    const QString suffix = QFileInfo(Util::toQString(target)).suffix();
    if (suffix == QLatin1String("csv") || suffix == QLatin1String("npy"))
        throw Refusal(about(target, QStringLiteral("only results are converted to .csv and .npy")));
    if (arguments.has("fields") || arguments.has("nodes"))
        throw Refusal(QStringLiteral("convert: --fields and --nodes are for results"));
}

void ConfigurationConversion::run(const InputPath& input, FileKind kind, Output& output) const
{
    const Nereo2ConfigFile file = settingsOf(input, kind);
    const QByteArray bytes = bytesOf(file, isXml_);
    const std::string lost = firstLost(file, bytes, isXml_);
    if (!lost.empty())
        throw Refusal(
            about(input.name(),
                  QStringLiteral("the %1 form can't carry the value of %2")
                      .arg(isXml_ ? QStringLiteral("XML") : QStringLiteral("text"), Util::toQString(lost))));
    saveTo(target_, output, [&bytes](const Sink& sink) {
        sink({bytes.constData(), std::size_t(bytes.size())});
    });
}

} // namespace Nereo::Tool
