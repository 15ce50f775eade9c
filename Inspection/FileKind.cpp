#include <NereoInspection/FileKind.h>

#include "Walker.h"

#include <FileIO/ConfigurationForms.h>
#include <FileIO/MaterialDatabaseXml.h>
#include <FileIO/XmlTokens.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoUtility/StringConversion.h>

#include <QTextCodec>
#include <QVector>

#include <algorithm>
#include <iterator>

namespace Nereo::Inspection {

namespace {

constexpr qint64 textLookedAt = 64 * 1024;
constexpr qint64 documentLookedAt = 1024 * 1024; // a root may stand behind a long comment

constexpr const char* kindNames[] = {
    "", "configuration-xml", "configuration-text", "control", "materials", "geometry-boundary", "results"};

struct Root {
    const char* element;
    FileKind kind;
};

constexpr Root roots[] = {
    {Io::configurationElement,  FileKind::ConfigurationXml},
    {Io::MaterialXml::database, FileKind::Materials       },
};

bool isResults(const QByteArray& start)
{
    // Zero, or one in the writer's own byte order; and the marker behind the counts.
    static const QByteArray firstWords[] = {QByteArray(4, '\0'), QByteArray("\0\0\0\1", 4),
                                            QByteArray("\1\0\0\0", 4)};
    constexpr int markerOffset = 306;
    const auto isFirst = [&](const QByteArray& word) { return start.startsWith(word); };
    return std::any_of(std::begin(firstWords), std::end(firstWords), isFirst)
        || start.mid(markerOffset, 4) == "\xFF\xFF\xFF\xFF";
}

/// The characters of a document that are ASCII, whether one, two or four bytes stand for each.
QByteArray asciiOf(const QByteArray& start)
{
    QByteArray ascii = start;
    ascii.replace('\0', QByteArray());
    for (const char* byteOrderMark : {"\xEF\xBB\xBF", "\xFE\xFF", "\xFF\xFE"}) {
        if (ascii.startsWith(byteOrderMark))
            return ascii.mid(int(qstrlen(byteOrderMark))).trimmed();
    }
    return ascii.trimmed();
}

/// Whether a start tag of such an element stands somewhere.
bool hasTag(const QByteArray& ascii, const char* element)
{
    static const QByteArray endsOfName(" \t\r\n/>");
    const QByteArray start = QByteArray("<") + element;
    for (int at = ascii.indexOf(start); at >= 0; at = ascii.indexOf(start, at + 1)) {
        const int end = at + start.size();
        if (end == ascii.size() || endsOfName.contains(ascii[end]))
            return true;
    }
    return false;
}

/// The kind of a document that is malformed before its root has been read, or has much before that.
FileKind kindOfTags(const QByteArray& ascii)
{
    for (const Root& root : roots) {
        if (hasTag(ascii, root.element))
            return root.kind;
    }
    return FileKind::Unknown;
}

FileKind kindOfDocument(const InputFile& file, const QByteArray& asciiStart)
{
    const auto device = file.open(QIODevice::Text);
    QXmlStreamReader xml(device.get());
    Io::configure(xml);
    while (Io::hasTokens(xml) && device->pos() < documentLookedAt) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        for (const Root& root : roots) {
            if (xml.name() == QLatin1String(root.element))
                return root.kind;
        }
    }
    return xml.isEndDocument() ? FileKind::Unknown : kindOfTags(asciiStart);
}

QString textOf(const QByteArray& start)
{
    const QTextCodec* const utf8 = QTextCodec::codecForName("UTF-8");
    QString text = QTextCodec::codecForUtfText(start, const_cast<QTextCodec*>(utf8))->toUnicode(start);
    return text.remove(QLatin1Char('\r'));
}

template <class Predicate>
auto countLines(const QString& text, Predicate predicate)
{
    const QVector<QStringRef> lines = text.splitRef(QLatin1Char('\n'));
    return std::count_if(lines.begin(), lines.end(), predicate);
}

FileKind kindOfText(const QString& text)
{
    static const Io::Nereo2ConfigFile configuration;
    const auto isControlTitle = [](const QStringRef& line) {
        return line.startsWith(QLatin1String(" *** "));
    };
    const auto isGeometryTitle = [](const QStringRef& line) {
        return line.startsWith(QLatin1String("*** "));
    };
    const auto isSetting = [](const QStringRef& line) {
        const QStringRef trimmed = line.trimmed();
        const auto end = std::find_if(trimmed.begin(), trimmed.end(), [](QChar c) { return c.isSpace(); });
        const QString word(trimmed.begin(), int(end - trimmed.begin()));
        return configuration.contains(Util::toStdString(word));
    };

    if (text.startsWith(QLatin1String("NEREO control file")))
        return FileKind::Control;
    // A title that is written like those of the other kind makes no file of that kind.
    const auto controlTitles = countLines(text, isControlTitle);
    const auto geometryTitles = countLines(text, isGeometryTitle);
    if (controlTitles + geometryTitles > 0)
        return controlTitles >= geometryTitles ? FileKind::Control : FileKind::GeometryBoundary;
    return countLines(text, isSetting) > 0 ? FileKind::ConfigurationText : FileKind::Unknown;
}

} // namespace

QString kindName(FileKind kind)
{
    return QLatin1String(kindNames[int(kind)]);
}

FileKind kindOfName(const QString& name)
{
    const auto found = std::find(std::begin(kindNames), std::end(kindNames), name);
    return found == std::end(kindNames) ? FileKind::Unknown : FileKind(found - std::begin(kindNames));
}

FileKind kindOf(const InputFile& file)
{
    const QByteArray start = file.openBytes()->read(textLookedAt);
    if (isResults(start))
        return FileKind::Results;
    const QByteArray ascii = asciiOf(start);
    if (!ascii.startsWith('<'))
        return kindOfText(textOf(start));
    return kindOfDocument(file, ascii);
}

FileKind kindOfFile(const std::string& path)
{
    const InputFile file(path);
    return file.isOpen() ? kindOf(file) : FileKind::Unknown;
}

} // namespace Nereo::Inspection
