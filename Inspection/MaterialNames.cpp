#include "MaterialNames.h"

#include <FileIO/MaterialDatabaseXml.h>
#include <FileIO/XmlTokens.h>
#include <NereoInspection/Outline.h>
#include <NereoUtility/StringConversion.h>

#include <QCryptographicHash>
#include <QXmlStreamReader>

namespace Nereo::Inspection {

namespace {

namespace MaterialXml = Io::MaterialXml;

constexpr qint64 roomForEntities = 32 * 1024 * 1024;

/// A name that is too long for addresses is cut, and a digest tells it from others that begin like it.
QString shortened(const QString& name)
{
    constexpr int longestName = 200;
    constexpr int digits = 16;
    if (name.size() <= longestName)
        return name;
    const QByteArray digest = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha256).toHex();
    return name.left(longestName) + QChar(0x2026) + QLatin1String(digest.left(digits));
}

QString nameOfMaterial(QXmlStreamReader& xml)
{
    QString name;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String(MaterialXml::name))
            name = keptText(xml.readElementText(QXmlStreamReader::SkipChildElements));
        else
            xml.skipCurrentElement();
    }
    return name;
}

} // namespace

MaterialNames::MaterialNames(const InputFile& file) : mostBytes_(file.size() + roomForEntities)
{
    const auto device = file.open(QIODevice::Text);
    QXmlStreamReader xml(device.get());
    Io::configure(xml);
    while (Io::hasTokens(xml)) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String(MaterialXml::database))
            readDatabase(xml);
    }
}

MaterialNames::~MaterialNames() = default;

MaterialNames::Name MaterialNames::next()
{
    ++place_;
    const std::string_view name = at_ < names_.size() ? names_.constData() + at_ : "";
    at_ += int(name.size()) + 1;
    const QString number = QStringLiteral("#%1");
    if (name.empty())
        return {number.arg(place_)};
    const int count = ++counts_[name];
    const QString part = addressPart(QString::fromUtf8(name.data(), int(name.size())));
    return {count == 1 ? part : part + number.arg(count), count > 1};
}

void MaterialNames::readDatabase(QXmlStreamReader& xml)
{
    hasDatabase_ = true;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String(MaterialXml::material))
            append(nameOfMaterial(xml));
        else
            xml.skipCurrentElement();
    }
}

void MaterialNames::append(const QString& name)
{
    const QByteArray utf8 = shortened(name).toUtf8();
    if (names_.size() + utf8.size() < mostBytes_)
        names_ += utf8;
    names_ += '\0';
}

QString keptText(const QString& text)
{
    return Util::toQString(Util::toStdString(text));
}

} // namespace Nereo::Inspection
