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

/// A name as it is read piece by piece. One that is too long for addresses is cut, and a digest tells it from
/// others that begin like it.
class NamePieces {
public:
    void add(const QStringRef& piece)
    {
        const int room = longestName - start_.size();
        start_ += piece.left(room);
        if (piece.size() <= room)
            return;
        isCut_ = true;
        const QStringRef rest = piece.mid(room);
        digest_.addData(reinterpret_cast<const char*>(rest.unicode()), rest.size() * int(sizeof(QChar)));
    }

    QString name() const
    {
        constexpr int digits = 16;
        const QString start = keptText(start_);
        return isCut_ ? start + QChar(0x2026) + QLatin1String(digest_.result().toHex().left(digits)) : start;
    }

private:
    static constexpr int longestName = 200;

    QString start_;
    bool isCut_ = false;
    QCryptographicHash digest_ {QCryptographicHash::Sha256};
};

/// The text of the current element, as readElementText() gives it where elements in it are skipped.
QString nameIn(QXmlStreamReader& xml)
{
    NamePieces pieces;
    while (Io::hasTokens(xml)) {
        xml.readNext();
        if (xml.isEndElement())
            break;
        if (xml.isStartElement())
            xml.skipCurrentElement();
        else if (xml.isCharacters() || xml.isEntityReference())
            pieces.add(xml.text());
    }
    return pieces.name();
}

QString nameOfMaterial(QXmlStreamReader& xml)
{
    QString name;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String(MaterialXml::name))
            name = nameIn(xml);
        else
            xml.skipCurrentElement();
    }
    return name;
}

} // namespace

NameRoom::NameRoom(const InputFile& file) : bytesLeft_(file.size() + roomForEntities) {}

bool NameRoom::take(const QString& name)
{
    constexpr int end = 1; // a byte behind each
    const int size = name.toUtf8().size();
    const bool hasRoom = size < bytesLeft_;
    bytesLeft_ -= end + (hasRoom ? size : 0);
    return hasRoom;
}

MaterialNames::MaterialNames(const InputFile& file) : room_(file)
{
    const auto device = file.open(QIODevice::Text);
    QXmlStreamReader xml(device.get());
    Io::configure(xml);
    while (Io::hasTokens(xml)) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String(MaterialXml::database))
            readDatabase(xml);
    }
    counts_.reserve(std::size_t(named_));
}

MaterialNames::~MaterialNames() = default;

MaterialNames::Name MaterialNames::next()
{
    ++place_;
    const std::string_view name = at_ < names_.size() ? names_.constData() + at_ : "";
    at_ += int(name.size()) + 1;
    const int count = name.empty() ? 0 : ++counts_[name];
    return {partOf(QString::fromUtf8(name.data(), int(name.size())), count, place_), count > 1};
}

QString MaterialNames::nameOf(const QString& text)
{
    NamePieces pieces;
    pieces.add(QStringRef(&text));
    return pieces.name();
}

QString MaterialNames::partOf(const QString& name, int count, int place)
{
    const QString number = QStringLiteral("#%1");
    if (name.isEmpty())
        return number.arg(place);
    const QString part = addressPart(name);
    return count == 1 ? part : part + number.arg(count);
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
    if (room_.take(name)) {
        names_ += name.toUtf8();
        named_ += !name.isEmpty();
    }
    names_ += '\0';
}

QString keptText(const QString& text)
{
    return Util::toQString(Util::toStdString(text));
}

} // namespace Nereo::Inspection
