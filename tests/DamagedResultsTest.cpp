#include "support/Bits.h"
#include "support/DamagedLoads.h"
#include "support/ResultsBytes.h"
#include "support/SameContent.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFile.h>

#include <QtEndian>

#include <algorithm>
#include <vector>

namespace Nereo::Io {
namespace {

/// Looks up each item at its place in the file.
class ExpectedFromBytes {
public:
    explicit ExpectedFromBytes(const std::string& bytes) : bytes_(QByteArray::fromStdString(bytes))
    {
        isLittleEndian_ = integer(0) == 0;
        ResultsFile& results = load_.content;
        results.setVersion(Util::Version(integer(4), integer(8), integer(12), 0));
        results.setDateTimeString(QString::fromUtf8(text(16, 26)).toStdString());
        results.setTitle(QString::fromUtf8(text(42, 256)).toStdString());
        results.setNodeCount(integer(298));
        results.setElementCount(integer(302));
        if (integer(306) != -1)
            return;
        results.setIterations(integer(314), integer(310));
        results.setTimeSteps(integer(322), integer(318));
        results.setCurrentTime(number(326));
        results.setTimeStepSize(number(334));
        if (integer(342) != -1)
            return;
        expectNames();
        expectRecords();
    }

    const ExpectedLoad<ResultsFile>& load() const { return load_; }

private:
    struct Column {
        qint64 index;
        int code;
    };

    bool has(qint64 place, qint64 size) const { return place + size <= bytes_.size(); }

    template <class Number>
    Number bits(qint64 place) const
    {
        if (!has(place, sizeof(Number)))
            return 0;
        const char* const at = bytes_.constData() + place;
        return isLittleEndian_ ? qFromLittleEndian<Number>(at) : qFromBigEndian<Number>(at);
    }

    qint32 integer(qint64 place) const { return bits<qint32>(place); }

    double number(qint64 place) const { return fromBits(bits<quint64>(place)); }

    QByteArray text(qint64 place, int size) const
    {
        return has(place, 0) ? bytes_.mid(int(place), size).split('\0').first() : QByteArray();
    }

    void expectNames()
    {
        if (integer(346) < 0)
            return stop("ASSERT failure in QVector::QVector: \"Size must be greater than or equal to 0.\"");
        ResultsFile& results = load_.content;
        for (qint64 column = 0; column < integer(346) && has(350 + 21 * column, 1); ++column) {
            const QString name = QString::fromLatin1(text(350 + 21 * column, 21));
            const int code = CodeNameTable::instance().codeForName(name);
            if (code == kNone)
                continue;
            if (results.containsFieldData(code)) {
                if (has(350 + 21 * column, 21))
                    return stop("ASSERT: \"false\" in file FileIO/ResultsFile, line 166");
                continue;
            }
            if (results.nodeCount() < 0) {
                return stop("ASSERT failure in QVector::QVector: "
                            "\"Size must be greater than or equal to 0.\"");
            }
            results.addFieldDataCode(code);
            columns_.push_back({column, code});
        }
    }

    void expectRecords()
    {
        ResultsFile& results = load_.content;
        const qint64 fieldCount = integer(346);
        const qint64 first = 354 + 21 * fieldCount;
        const qint64 size = 4 + 8 * fieldCount;
        for (qint64 record = 0; record < results.nodeCount(); ++record) {
            const qint64 place = first + record * size;
            if (!has(place, 4) || columns_.empty() || !load_.stop.empty())
                return;
            const int node = integer(place);
            if (node < 1 || node > results.nodeCount())
                return stop("ASSERT failure in QVector<T>::operator[]: \"index out of range\"");
            for (const auto& [index, code] : columns_)
                results.setFieldData(code, node, number(place + 4 + 8 * index));
        }
    }

    void stop(const char* text) { load_.stop = text; }

    QByteArray bytes_;
    bool isLittleEndian_ = false; // the first word is big-endian in every file
    ExpectedLoad<ResultsFile> load_;
    std::vector<Column> columns_;
};

ExpectedLoad<ResultsFile> expectedFromBytes(const std::string& bytes)
{
    return ExpectedFromBytes(bytes).load();
}

/// Two fields that are known and one that isn't, on 128 nodes: a number that is negative in the other byte
/// order, so that damage to the first word announces no gigabytes.
std::string smallFile(QDataStream::ByteOrder order)
{
    ResultsBytes bytes(order);
    bytes.header(128).run().names({"kU", "kFoo", "kP"});
    for (int node = 1; node <= 128; ++node)
        bytes.record(node, {node + 0.5, -1.0, node * 10.0});
    return bytes.bytes().toStdString();
}

TEST(DamagedResultsDeathTest, LoadsOfALittleEndianFileWhatTheDescriptionSays)
{
    const std::string whole = smallFile(QDataStream::LittleEndian);
    DamagedLoads<ResultsFile> loads("res");
    loads.expect(cutAnywhere(whole), expectedFromBytes);
    loads.expect(withAByteReplaced(whole), expectedFromBytes);
}

TEST(DamagedResultsDeathTest, LoadsOfABigEndianFileWhatTheDescriptionSays)
{
    const std::string whole = smallFile(QDataStream::BigEndian);
    DamagedLoads<ResultsFile> loads("res");
    loads.expect(cutAnywhere(whole), expectedFromBytes);
    loads.expect(withAByteReplaced(whole), expectedFromBytes);
}

} // namespace
} // namespace Nereo::Io
