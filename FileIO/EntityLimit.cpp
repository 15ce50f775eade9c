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
    bool isReadable = false; // within the limit
    bool isWhole = true;
};

/// Reads the prolog of a document that begins so.
Prolog readProlog(const QByteArray& start, int limit)
{
    QXmlStreamReader xml(start);
    xml.setEntityExpansionLimit(limit);
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
Prolog peekAtProlog(QIODevice& device, int limit)
{
    for (qint64 size = blockSize;; size *= 2) {
        const QByteArray start = device.peek(size);
        Prolog prolog = readProlog(start, limit);
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

/// The most references that there can be.
struct References {
    qint64 byAmpersand = 0;
    qint64 byPercentSign = 0; // to parameter entities, in the prolog only
};

References countReferences(QIODevice& device, const Prolog& prolog)
{
    References references;
    std::unique_ptr<QTextDecoder> decoder;
    device.startTransaction();
    for (QByteArray block; !(block = device.read(blockSize)).isEmpty();) {
        if (decoder == nullptr)
            decoder.reset(codecOf(prolog.encoding, block).makeDecoder());
        const QString text = decoder->toUnicode(block);
        references.byAmpersand += text.count('&');
        references.byPercentSign += text.count('%');
    }
    device.rollbackTransaction();
    return references;
}

int limitFor(qint64 references)
{
    return int(std::min(mostCharactersEach, mostCharacters / std::max(references, qint64(1))));
}

} // namespace

void limitEntities(QXmlStreamReader& xml)
{
    QIODevice& device = *xml.device();
    const Prolog prolog = peekAtProlog(device, 0); // how many references there are isn't known yet
    if (prolog.isReadable && !prolog.declaresEntities)
        return;
    const References references = countReferences(device, prolog);
    xml.setEntityExpansionLimit(limitFor(references.byAmpersand));
    if (prolog.isReadable)
        return;
    // The prolog itself expands entities. As long as it is small, percent signs are just characters.
    const int limitOfProlog = limitFor(references.byAmpersand + references.byPercentSign);
    if (!peekAtProlog(device, limitOfProlog).isReadable)
        xml.setEntityExpansionLimit(limitOfProlog);
}

} // namespace Nereo::Io
