#include "EntityLimit.h"

#include "XmlTokens.h"

#include <QIODevice>
#include <QTextCodec>

#include <algorithm>
#include <memory>

namespace Nereo::Io {

namespace {

constexpr qint64 mostCharacters = 64'000'000;
constexpr qint64 mostCharactersEach = 4096; // Qt's
constexpr qint64 blockSize = 16 * 1024;

struct Prolog {
    QByteArray encoding; // empty where none is declared
    bool declaresEntities = false;
    bool isReadable = false; // without the entities that it declares
    bool isWhole = true;
};

/// Reads the prolog of a document that begins so.
Prolog readProlog(const QByteArray& start)
{
    QXmlStreamReader xml(start);
    xml.setEntityExpansionLimit(0); // how many references there are isn't known yet
    Prolog prolog;
    while (hasTokens(xml) && !xml.isDTD() && !xml.isStartElement()) {
        xml.readNext();
        if (xml.isStartDocument())
            prolog.encoding = xml.documentEncoding().toLatin1();
    }
    prolog.declaresEntities = !xml.entityDeclarations().isEmpty();
    prolog.isReadable = !xml.hasError();
    prolog.isWhole = xml.error() != QXmlStreamReader::PrematureEndOfDocumentError;
    return prolog;
}

/// Leaves what it reads to the stream.
Prolog peekAtProlog(QIODevice& device)
{
    for (qint64 size = blockSize;; size *= 2) {
        const QByteArray start = device.peek(size);
        const Prolog prolog = readProlog(start);
        if (prolog.isWhole || start.size() < size)
            return prolog;
    }
}

const QTextCodec& codecOf(const QByteArray& encoding, const QByteArray& start)
{
    const QTextCodec* const declared = QTextCodec::codecForName(encoding);
    return declared != nullptr ? *declared
                               : *QTextCodec::codecForUtfText(start, QTextCodec::codecForName("UTF-8"));
}

/// The most references that there can be. Those to parameter entities begin with a percent sign, and stand in
/// the prolog only.
qint64 countReferences(QIODevice& device, const Prolog& prolog)
{
    qint64 references = 0;
    std::unique_ptr<QTextDecoder> decoder;
    device.startTransaction();
    for (QByteArray block; !(block = device.read(blockSize)).isEmpty();) {
        if (decoder == nullptr)
            decoder.reset(codecOf(prolog.encoding, block).makeDecoder());
        const QString text = decoder->toUnicode(block);
        references += text.count('&');
        if (!prolog.isReadable)
            references += text.count('%');
    }
    device.rollbackTransaction();
    return references;
}

} // namespace

void limitEntities(QXmlStreamReader& xml)
{
    QIODevice& device = *xml.device();
    const Prolog prolog = peekAtProlog(device);
    if (prolog.isReadable && !prolog.declaresEntities)
        return;
    const qint64 references = std::max(countReferences(device, prolog), qint64(1));
    xml.setEntityExpansionLimit(int(std::min(mostCharactersEach, mostCharacters / references)));
}

} // namespace Nereo::Io
