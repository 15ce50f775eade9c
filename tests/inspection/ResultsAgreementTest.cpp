#include "Agreement.h"
#include "Checked.h"

#include "support/Bytes.h"
#include "support/ResultsBytes.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoInspection/Outline.h>
#include <fuzz/LoadEnd.h>

#include <gtest/gtest.h>

#include <QDir>

#include <map>
#include <random>

namespace Nereo::Inspection {
namespace {

constexpr QDataStream::ByteOrder bothOrders[] = {QDataStream::LittleEndian, QDataStream::BigEndian};

/// Three fields, one of them unknown, at a few nodes.
std::string smallFile(QDataStream::ByteOrder order)
{
    ResultsBytes bytes(order);
    bytes.header(40).run().names({"kU", "kFoo", "kP"});
    for (int node = 1; node <= 40; ++node)
        bytes.record(node, {node + 0.5, -1.0, node * 10.0});
    return bytes.bytes().toStdString();
}

QString textOf(const std::string& text)
{
    return QString::fromStdString(text);
}

/// What a load gives, by address.
std::map<QString, QVariant> factsOf(const Io::ResultsFile& results)
{
    return {
        {"version",            results.version().toString()    },
        {"date",               textOf(results.dateTimeString())},
        {"title",              textOf(results.title())         },
        {"nodes",              results.nodeCount()             },
        {"elements",           results.elementCount()          },
        {"iteration/current",  results.currentIteration()      },
        {"iteration/starting", results.startingIteration()     },
        {"time-step/current",  results.currentTimeStep()       },
        {"time-step/starting", results.startingTimeStep()      },
        {"time-step/size",     results.timeStepSize()          },
        {"time",               results.currentTime()           },
    };
}

/// Expects that an outline has what a load gives.
void expectSameContent(const std::string& path)
{
    Io::ResultsFile results;
    ASSERT_TRUE(results.loadFrom(path));
    const std::map<QString, QVariant> facts = factsOf(results);
    int fields = 0;
    outline(path, FileKind::Results, [&](const Item& item) {
        if (item.type != Item::Type::Field) {
            EXPECT_EQ(item.value.toString(), facts.at(item.address).toString()) << item.address.toStdString();
            return;
        }
        if (item.value.toInt() == 0)
            return;
        ++fields;
        const int code = Io::CodeNameTable::instance().codeForName(item.spelling);
        EXPECT_EQ(item.value.toInt(), results.fieldData(code).size()) << item.address.toStdString();
    });
    EXPECT_EQ(fields, results.nodeCount() > 0 ? results.fieldDataCodes().size() : 0);
}

class ResultsAgreementTest : public ::testing::Test {
protected:
    void expect(const DamagedFile& file)
    {
        agreement_.expect(file);
        const std::string path = folder_.freshPath("run.res");
        writeBytes(path, file.bytes);
        CheckOptions options;
        options.kind = FileKind::Results;
        SCOPED_TRACE(file.damage);
        if (firstEnd(check(path, options).findings) == Effect::None)
            expectSameContent(path);
    }

    void expectEach(const std::vector<DamagedFile>& files)
    {
        for (const DamagedFile& file : files) {
            expect(file);
            if (HasFailure())
                return; // one of thousands says enough
        }
    }

private:
    Agreement agreement_ {"damaged.res", FileKind::Results};
    TemporaryFolder folder_;
};

TEST_F(ResultsAgreementTest, AgreesWithLoadsOfFilesThatAreCut)
{
    for (const auto order : bothOrders)
        expectEach(cutAnywhere(smallFile(order)));
}

TEST_F(ResultsAgreementTest, AgreesWithLoadsOfFilesWithAnotherByte)
{
    for (const auto order : bothOrders)
        expectEach(withAByteReplaced(smallFile(order)));
}

TEST_F(ResultsAgreementTest, AgreesWithLoadsOfWhatFuzzersStartFrom)
{
    const QDir corpus(NEREO_RESULTS_CORPUS);
    const QStringList names = corpus.entryList(QDir::Files);
    EXPECT_FALSE(names.isEmpty());
    for (const QString& name : names)
        expect({name.toStdString(), readBytes(corpus.filePath(name).toStdString())});
}

/// Counts, names and nodes that contradict each other in every way.
TEST_F(ResultsAgreementTest, AgreesWithLoadsOfAnyContradiction)
{
    constexpr int files = 1500;
    std::mt19937 random(20261121);
    const auto upTo = [&random](int most) { return int(random() % unsigned(most + 1)); };
    const char* const names[] = {"kU", "kP", "kT", "kFoo", "kNone", "kKXX", "kCond", ""};
    for (int i = 0; i < files && !HasFailure(); ++i) {
        ResultsBytes bytes(bothOrders[upTo(1)]);
        const int nodeCount = upTo(5) - (upTo(20) == 0 ? 8 : 0);
        const int fieldCount = upTo(3);
        bytes.header(nodeCount, upTo(30) == 0 ? 5 : -1).run(upTo(30) == 0 ? 5 : -1);
        bytes.integer(fieldCount + (upTo(10) == 0 ? upTo(4) - 3 : 0));
        for (int column = 0; column < fieldCount; ++column)
            bytes.text(names[upTo(upTo(3) == 0 ? 7 : 3)], 21);
        bytes.integer(upTo(2) == 0 ? upTo(70) : 0);
        for (int record = 0; record < nodeCount; ++record) {
            bytes.integer(upTo(6) == 0 ? upTo(nodeCount + 2) - 1 : record + 1);
            for (int column = 0; column < fieldCount; ++column)
                bytes.number(upTo(9));
        }
        std::string file = bytes.bytes().toStdString();
        if (upTo(4) == 0)
            file.resize(file.size() - std::size_t(upTo(60)));
        else if (upTo(6) == 0)
            file.append(std::size_t(upTo(30)), 'k');
        expect({"file " + std::to_string(i), file});
    }
}

} // namespace
} // namespace Nereo::Inspection
