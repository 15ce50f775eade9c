#include "Checked.h"

#include "benchmarks/Memory.h"
#include "support/LoadWatch.h"
#include "support/OwnProcess.h"
#include "support/Pipe.h"
#include "support/ResultsBytes.h"
#include "support/Sanitizers.h"

#include <FileIO/FieldMemory.h>
#include <NereoInspection/Outline.h>

#include <QtEndian>

#include <sys/resource.h>

#include <limits>

namespace Nereo::Inspection {
namespace {

using Order = QDataStream::ByteOrder;
constexpr Order bothOrders[] = {QDataStream::LittleEndian, QDataStream::BigEndian};

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

// Where things stand in a file of two fields.
constexpr int firstRecord = 396;
constexpr int recordSize = 20;
constexpr int wholeSize = firstRecord + 4 * recordSize;

/// Everything up to the records.
ResultsBytes start(Order order, int nodeCount, std::initializer_list<const char*> names)
{
    ResultsBytes bytes(order);
    bytes.header(nodeCount).run().names(names);
    return bytes;
}

/// The fields kU and kP at four nodes.
ResultsBytes whole(Order order)
{
    return start(order, 4, {"kU", "kP"})
        .record(1, {1, 2})
        .record(2, {3, 4})
        .record(3, {5, 6})
        .record(4, {7, 8});
}

/// The same with another number at a place.
QByteArray with(Order order, int place, qint32 number)
{
    QByteArray bytes = whole(order);
    order == QDataStream::LittleEndian ? qToLittleEndian(number, bytes.data() + place)
                                       : qToBigEndian(number, bytes.data() + place);
    return bytes;
}

/// The same with other bytes at a place.
QByteArray with(Order order, int place, const char* text)
{
    return whole(order).bytes().replace(place, int(qstrlen(text)), text);
}

/// The other number as the first word, so that the rest is in the order that it doesn't select.
QByteArray inTheOtherOrder(Order order, int nodeCount, std::initializer_list<const char*> names)
{
    ResultsBytes bytes = start(order, nodeCount, names);
    for (int node = 1; node <= nodeCount; ++node) {
        bytes.integer(node);
        for (std::size_t i = 0; i < names.size(); ++i)
            bytes.number(1);
    }
    return bytes.bytes().replace(0, 4, order == QDataStream::LittleEndian ? "\0\0\0\1" : "\0\0\0\0", 4);
}

struct Expected {
    const char* code;
    Severity severity;
    Effect effect;
    qint64 offset;
    QString address;
    QString found;
    QString message = {}; ///< a part of it
};

using Expectations = std::vector<Expected>;

void expectFindings(const QByteArray& bytes, const Expectations& expectations, const std::string& what)
{
    const CheckedFile checked = checkedBytes("run.res", bytes.toStdString(), FileKind::Results);
    SCOPED_TRACE(what + '\n' + linesOf(checked));
    ASSERT_EQ(checked.findings.size(), expectations.size());
    for (std::size_t i = 0; i < expectations.size(); ++i) {
        const Finding& finding = checked.findings[i];
        const Expected& expected = expectations[i];
        EXPECT_EQ(finding.code, expected.code);
        EXPECT_EQ(finding.severity, expected.severity);
        EXPECT_EQ(effectName(finding.effect), effectName(expected.effect));
        EXPECT_EQ(finding.place.offset, expected.offset);
        EXPECT_FALSE(finding.place.hasLine());
        EXPECT_EQ(finding.address, expected.address);
        EXPECT_EQ(finding.found, expected.found);
        EXPECT_TRUE(finding.message.contains(expected.message)) << finding.message.toStdString();
        EXPECT_EQ(finding.more, 0);
    }
}

struct Case {
    const char* what;
    QByteArray (*bytes)(Order order);
    Expectations findings;
};

template <std::size_t count>
void expectEach(const Case (&cases)[count])
{
    for (const Case& each : cases) {
        for (const Order order : bothOrders) {
            const char* const name = order == QDataStream::LittleEndian ? ", little-endian" : ", big-endian";
            expectFindings(each.bytes(order), each.findings, std::string(each.what) + name);
        }
    }
}

constexpr Severity error = Severity::Error;
constexpr Severity warning = Severity::Warning;

TEST(ResultsCheckTest, FindsNothingInWhatASolverWrites)
{
    for (const Order order : bothOrders) {
        for (const QByteArray& bytes :
             {whole(order).bytes(), start(order, 0, {"kU"}).bytes(), start(order, 0, {}).bytes(),
              start(order, 2, {}).record(2, {}).record(1, {}).bytes(), // nodes in any order
              start(order, 1, {"kSlipNode", "kKXX", "kNull"}).record(1, {1e308, -5e-324, -0.0}).bytes()})
            expectClean("run.res", bytes.toStdString());
    }
}

TEST(ResultsCheckTest, SaysOfTheSamplesThatOneHasAFieldThatNobodyKnows)
{
    const std::string folder = NEREO_SAMPLES_DIR "/";
    EXPECT_EQ(linesOf(check(folder + "cavity.res")), "");
    EXPECT_EQ(
        linesOf(check(folder + "cavity-be.res")),
        folder
            + "cavity-be.res@392: warning: \"kVorticityZ\" is no field variable; its values are ignored "
              "[unknown-field] kVorticityZ\n");
}

TEST(ResultsCheckTest, FindsWhatIsWrongWithMarkersAndCounts)
{
    const Case cases[] = {
        {"header's marker",
         [](Order order) { return with(order, 306, 7); },
         {{"bad-marker", error, Effect::Ignored, 306, "", "7", "nothing behind it is read"}}             },
        {"run's marker",
         [](Order order) { return with(order, 342, smallest); },
         {{"bad-marker", error, Effect::Ignored, 342, "", "-2147483648"}}                                },
        {"negative number of fields",
         [](Order order) { return with(order, 346, -3); },
         {{"negative-count", error, Effect::Stops, 346, "", "-3"}}                                       },
        {"negative number of nodes",
         [](Order order) { return with(order, 298, -4); },
         {{"negative-count", error, Effect::Stops, 298, "nodes", "-4"}}                                  },
        {"negative number of nodes without fields",
         [](Order order) { return start(order, smallest, {}).bytes(); },
         {{"negative-count", error, Effect::None, 298, "nodes", "-2147483648"}}                          },
        {"negative number of nodes without a known field",
         [](Order order) { return start(order, -1, {"kFoo"}).bytes(); },
         {{"negative-count", error, Effect::None, 298, "nodes", "-1"},
          {"unknown-field", warning, Effect::Ignored, 350, "kFoo", "kFoo"}}                              },
        {"more nodes than a field holds",
         [](Order order) { return with(order, 298, 2'000'000'000); },
         {{"too-large", error, Effect::Throws, 298, "nodes", "2000000000"}}                              },
        {"one more than a field holds",
         [](Order order) { return with(order, 298, Io::mostValuesOfField + 1); },
         {{"too-large", error, Effect::Throws, 298, "nodes", QString::number(Io::mostValuesOfField + 1)}}},
        {"as many as a field holds",
         [](Order order) { return with(order, 298, Io::mostValuesOfField); },
         {{"cut-short", error, Effect::Zero, wholeSize, "", "4"}}                                        },
        {"many nodes without fields",
         [](Order order) { return start(order, largest, {}).bytes(); },
         {{"cut-short", error, Effect::None, 354, "", "0",
           "0 of 2147483647 records are whole; without a known field no value is missing"}}              },
        {"records of no known field cut off",
         [](Order order) { return start(order, 2, {"kFoo"}).record(1, {1}).bytes(); },
         {{"unknown-field", warning, Effect::Ignored, 350, "kFoo", "kFoo"},
          {"cut-short", error, Effect::None, 387, "", "1", "without a known field no value is missing"}} },
        {"more nodes than there are",
         [](Order order) { return with(order, 298, 5); },
         {{"cut-short", error, Effect::Zero, wholeSize, "", "4", "4 of 5 records are whole"}}            },
        {"fewer nodes than there are",
         [](Order order) { return with(order, 298, 3); },
         {{"trailing-bytes", warning, Effect::Ignored, wholeSize - recordSize, "", "20"}}                },
        {"more fields than there are",
         [](Order order) { return with(order, 346, 2'000'000'000); },
         {{"cut-short", error, Effect::Zero, wholeSize, "", "0", "0 of 4 records are whole"}}            },
        {"a byte behind the end",
         [](Order order) { return whole(order).bytes() + '\0'; },
         {{"trailing-bytes", warning, Effect::Ignored, wholeSize, "", "1"}}                              },
        {"bytes behind no fields",
         [](Order order) { return start(order, 0, {}).bytes() + "abc"; },
         {{"trailing-bytes", warning, Effect::Ignored, 354, "", "3"}}                                    },
        {"bytes behind no nodes",
         [](Order order) { return start(order, 0, {"kU"}).bytes() + "abc"; },
         {{"trailing-bytes", warning, Effect::Ignored, 375, "", "3"}}                                    },
    };
    expectEach(cases);
}

TEST(ResultsCheckTest, FindsTheWrongByteOrderAndNotWhatComesOfIt)
{
    const Case cases[] = {
        {"without fields",
         [](Order order) { return inTheOtherOrder(order, 3, {}); },
         {{"byte-order", error, Effect::None, 0, "", {}}}                                                                                        },
        {"so many nodes in the other order that values are missing",
         [](Order order) {
             return inTheOtherOrder(order, 4, {"kU", "kP"});
         },                                                         {{"byte-order", error, Effect::Zero, 0, "", {}, "is read as 0"}}             },
        {"too many nodes in the other order",
         [](Order order) {
             return inTheOtherOrder(order, 0x70, {"kU", "kP"});
         },                                                         {{"byte-order", error, Effect::Throws, 0, "", {}, "a load throws"}}          },
        {"a negative number in the other order",
         [](Order order) {
             return inTheOtherOrder(order, 0xF0, {"kU", "kP"});
         },                                                         {{"byte-order", error, Effect::Stops, 0, "", {}, "a load stops the process"}}},
        {"with an unknown name",
         [](Order order) {
             return inTheOtherOrder(order, 4, {"kU", "kFoo"});
         },                                                         {{"byte-order", error, Effect::Zero, 0, "", {}},
          {"unknown-field", warning, Effect::Ignored, 371, "kFoo", "kFoo"}}                                                           },
        {"with a repeated name",
         [](Order order) {
             return inTheOtherOrder(order, 4, {"kU", "kU"});
         },                                                         {{"byte-order", error, Effect::Stops, 0, "", {}},
          {"repeated-field", error, Effect::Stops, 371, "kU#2", "kU"}}                                                                },
    };
    for (const Case& each : cases) {
        for (const Order order : bothOrders) {
            Expectations findings = each.findings;
            findings[0].found = order == QDataStream::LittleEndian ? "1" : "0";
            expectFindings(each.bytes(order), findings, each.what);
        }
    }
}

TEST(ResultsCheckTest, SaysThatANegativeNumberOfFieldsInTheOtherOrderStopsALoad)
{
    constexpr int fields = 0x80; // as the highest byte that of a number below 0
    for (const Order order : bothOrders) {
        ResultsBytes bytes(order);
        bytes.header(1).run().integer(fields);
        for (int i = 0; i < fields; ++i)
            bytes.text("kFoo" + std::to_string(i), 21);
        bytes.integer(0).integer(1);
        for (int i = 0; i < fields; ++i)
            bytes.number(1);
        const bool isLittleEndian = order == QDataStream::LittleEndian;
        expectFindings(bytes.bytes().replace(0, 4, isLittleEndian ? "\0\0\0\1" : "\0\0\0\0", 4),
                       {
                           {"byte-order", error, Effect::Stops, 0, "", isLittleEndian ? "1" : "0",
                            "a load stops the process"}
        },
                       "128 fields");
    }
}

TEST(ResultsCheckTest, FindsWhatIsWrongWithNames)
{
    const Case cases[] = {
        {"unknown",
         [](Order order) {
             return start(order, 0, {"kU", "kFoo"}).bytes();
         },                                                                              {{"unknown-field", warning, Effect::Ignored, 371, "kFoo", "kFoo"}}           },
        {"nearly known",
         [](Order order) { return start(order, 0, {"kKXx"}).bytes(); },
         {{"unknown-field", warning, Effect::Ignored, 350, "kKXx", "kKXx", "did you mean \"kKXX\"?"}}                                                                 },
        {"nearly a name that is never written",
         [](Order order) {
             return start(order, 0, {"kVolumRate", "kCondd"}).bytes();
         },                                                                              {{"unknown-field", warning, Effect::Ignored, 350, "kVolumRate", "kVolumRate",
           "did you mean \"kVolumeRate\"?"},
          {"unknown-field", warning, Effect::Ignored, 371, "kCondd", "kCondd", "did you mean \"kCond\"?"}}                                                 },
        {"no variable",
         [](Order order) { return start(order, 0, {"kNone"}).bytes(); },
         {{"unknown-field", warning, Effect::Ignored, 350, "kNone", "kNone"}}                                                                                         },
        {"empty",
         [](Order order) {
             return start(order, 0, {"kU", ""}).bytes();
         },                                                                              {{"unknown-field", warning, Effect::Ignored, 371, "#2", ""}}                 },
        {"signs of addresses",
         [](Order order) { return start(order, 0, {"a/b%c#d"}).bytes(); },
         {{"unknown-field", warning, Effect::Ignored, 350, "a%2Fb%25c%23d", "a/b%c#d"}}                                                                               },
        {"beyond ASCII",
         [](Order order) { return start(order, 0, {"k\xE4"}).bytes(); },
         {{"unknown-field", warning, Effect::Ignored, 350, QString::fromLatin1("k\xE4"),
           QString::fromLatin1("k\xE4")}}                                                                                                                             },
        {"without an end",
         [](Order order) { return start(order, 0, {"123456789012345678901"}).bytes(); },
         {{"unknown-field", warning, Effect::Ignored, 350, "123456789012345678901",
           "123456789012345678901"}}                                                                                                                                  },
        {"unknown twice",
         [](Order order) {
             return start(order, 0, {"kFoo", "kFoo"}).bytes();
         },                                                                              {{"unknown-field", warning, Effect::Ignored, 350, "kFoo", "kFoo"},
          {"unknown-field", warning, Effect::Ignored, 371, "kFoo#2", "kFoo"}}                                                                              },
        {"repeated",
         [](Order order) {
             return start(order, 0, {"kU", "kU"}).bytes();
         },                                                                              {{"repeated-field", error, Effect::Stops, 371, "kU#2", "kU"}}                },
        {"repeated by another name",
         [](Order order) {
             return start(order, 0, {"kKXX", "kCond"}).bytes();
         },                                                                              {{"repeated-field", error, Effect::Stops, 371, "kCond", "kCond"}}            },
        {"repeated by a flag",
         [](Order order) {
             return start(order, 0, {"kCond", "kVolumeRate"}).bytes();
         },                                                                              {{"repeated-field", error, Effect::Stops, 371, "kVolumeRate", "kVolumeRate"}}},
        {"repeated twice",
         [](Order order) {
             return start(order, 0, {"kU", "kU", "kU"}).bytes();
         },                                                                              {{"repeated-field", error, Effect::Stops, 371, "kU#2", "kU"},
          {"repeated-field", error, Effect::Stops, 392, "kU#3", "kU"}}                                                                                     },
    };
    expectEach(cases);
}

TEST(ResultsCheckTest, FindsWhatIsWrongWithTexts)
{
    const Case cases[] = {
        {"title",
         [](Order order) { return with(order, 42, "a\xC3\xA4\xFF\xFE"); },
         {{"not-utf8", warning, Effect::Replaced, 45, "title", "FF"}}    },
        {"date",
         [](Order order) { return with(order, 17, "\xE2\x82y"); },
         {{"not-utf8", warning, Effect::Replaced, 17, "date", "E2 82"}}  },
        {"both",
         [](Order order) { return with(order, 41, "\xC3\xC3"); },
         {{"not-utf8", warning, Effect::Replaced, 42, "title", "C3"}}    }, // the date has ended before
        {"beginning of a character at the end of a title",
         [](Order order) { return with(order, 42, (std::string(255, 'x') + '\xC3').c_str()); },
         {{"not-utf8", warning, Effect::Replaced, 297, "title", "C3"}}   },
        {"beginning of a character before a NUL",
         [](Order order) { return with(order, 42, "x\xF0\x9F").replace(45, 1, "", 1); },
         {{"not-utf8", warning, Effect::Replaced, 43, "title", "F0 9F"}} },
        {"byte-order mark",
         [](Order order) { return with(order, 42, "\xEF\xBB\xBFx"); },
         {{"stray-character", warning, Effect::Ignored, 42, "title", ""}}},
    };
    expectEach(cases);
}

TEST(ResultsCheckTest, FindsWhatIsWrongWithNodes)
{
    const Case cases[] = {
        {"node 0",
         [](Order order) { return with(order, firstRecord, 0); },
         {{"node-out-of-range", error, Effect::Stops, firstRecord, "", "0",
           "node 0 is outside 1 to 4 (1 such records)"}}                                               },
        {"node past the last",
         [](Order order) { return with(order, firstRecord + recordSize, 5); },
         {{"node-out-of-range", error, Effect::Stops, firstRecord + recordSize, "", "5"}}              },
        {"largest node",
         [](Order order) { return with(order, firstRecord, largest); },
         {{"node-out-of-range", error, Effect::Stops, firstRecord, "", "2147483647"}}                  },
        {"smallest node",
         [](Order order) { return with(order, firstRecord + 3 * recordSize, smallest); },
         {{"node-out-of-range", error, Effect::Stops, firstRecord + 3 * recordSize, "", "-2147483648"}}},
        {"several out of range",
         [](Order order) {
             return start(order, 3, {"kU"}).record(1, {1}).record(9000, {1}).record(-1, {1}).bytes();
         },                                                                                                {{"node-out-of-range", error, Effect::Stops, 387, "", "9000",
           "node 9000 is outside 1 to 3 (2 such records)"}}                                 },
        {"out of range without fields",
         [](Order order) { return start(order, 1, {}).record(2, {}).bytes(); },
         {{"node-out-of-range", warning, Effect::None, 354, "", "2"}}                                  },
        {"repeated",
         [](Order order) { return with(order, firstRecord + 2 * recordSize, 2); },
         {{"repeated-node", warning, Effect::Ignored, firstRecord + 2 * recordSize, "", "2", "1 records"},
          {"missing-node", warning, Effect::Zero, wholeSize, "", "3", "1 nodes"}}                      },
        {"repeated before trailing bytes",
         [](Order order) { return with(order, firstRecord, 4) + "abc"; },
         {{"repeated-node", warning, Effect::Ignored, firstRecord + 3 * recordSize, "", "4"},
          {"missing-node", warning, Effect::Zero, wholeSize, "", "1"},
          {"trailing-bytes", warning, Effect::Ignored, wholeSize, "", "3"}}                            },
        {"always the same",
         [](Order order) {
             return start(order, 3, {"kU"}).record(2, {1}).record(2, {1}).record(2, {1}).bytes();
         },                                                                                                {{"repeated-node", warning, Effect::Ignored, 387, "", "2", "2 records"},
          {"missing-node", warning, Effect::Zero, 411, "", "1", "2 nodes"}}                 },
        {"repeated without fields",
         [](Order order) { return start(order, 2, {}).record(2, {}).record(2, {}).bytes(); },
         {{"repeated-node", warning, Effect::None, 358, "", "2", "without a known field no value is ignored"},
          {"missing-node", warning, Effect::None, 362, "", "1",
           "without a known field no value is missing"}}                                               },
        {"repeated in a file that is cut short",
         [](Order order) { return with(order, firstRecord + recordSize, 1).chopped(recordSize); },
         {{"repeated-node", warning, Effect::Ignored, firstRecord + recordSize, "", "1"},
          {"cut-short", error, Effect::Zero, wholeSize - recordSize, "", "3"}}                         },
        {"out of range in a record that is cut off",
         [](Order order) { return with(order, firstRecord + 3 * recordSize, 5).chopped(recordSize - 4); },
         {{"node-out-of-range", error, Effect::Stops, firstRecord + 3 * recordSize, "", "5"},
          {"cut-short", error, Effect::Zero, wholeSize - recordSize + 4, "", "3"}}                     },
    };
    expectEach(cases);
}

TEST(ResultsCheckTest, FindsValuesThatAreNoFiniteNumbers)
{
    const Case cases[] = {
        {"one",
         [](Order order) {
             return start(order, 1, {"kU", "kP"}).record(1, {1, -infinity}).bytes();
         }, {{"not-finite", warning, Effect::None, 408, "kP", "1", "the first at node 1"}}        },
        {"several in two fields",
         [](Order order) {
             return start(order, 3, {"kU", "kP"})
                 .record(3, {1, notANumber})
                 .record(2, {infinity, 2})
                 .record(1, {3, -notANumber})
                 .bytes();
         }, {{"not-finite", warning, Effect::None, 408, "kP", "2", "the first at node 3"},
          {"not-finite", warning, Effect::None, 420, "kU", "1", "the first at node 2"}}},
        {"in a field that is ignored",
         [](Order order) {
             return start(order, 1, {"kFoo", "kP"}).record(1, {notANumber, 1}).bytes();
         }, {{"unknown-field", warning, Effect::Ignored, 350, "kFoo", "kFoo"}}                    },
        {"in a record that is cut off",
         [](Order order) {
             return start(order, 1, {"kU", "kP"}).record(1, {infinity, infinity}).bytes().chopped(1);
         }, {{"not-finite", warning, Effect::None, 400, "kU", "1"},
          {"cut-short", error, Effect::Zero, 415, "", "0"}}                            },
    };
    expectEach(cases);
}

TEST(ResultsCheckTest, FindsWhereAFileIsCutShort)
{
    for (const Order order : bothOrders) {
        QByteArray title = whole(order);
        title.replace(42, 6, "\xC3\xA4\xF0\x9F\x98\x80"); // is cut within a character, too
        for (const QByteArray& bytes : {title, start(order, 2, {}).record(1, {}).record(2, {}).bytes(),
                                        start(order, 0, {"kU"}).bytes()}) {
            const int fields = bytes.size() == 362 ? 0 : bytes.size() == 375 ? 1 : 2;
            const int records = 354 + 21 * fields;
            for (int size = 0; size < bytes.size(); ++size) {
                const int wholeRecords = std::max(size - records, 0) / (4 + 8 * fields);
                const Effect effect = fields == 0 && size >= 350 ? Effect::None : Effect::Zero;
                expectFindings(bytes.left(size),
                               {
                                   {"cut-short", error, effect, size, "", QString::number(wholeRecords)}
                },
                               "cut to " + std::to_string(size) + " of " + std::to_string(bytes.size()));
            }
        }
    }
}

TEST(ResultsCheckTest, ListsAThousandNamesAndCountsTheRest)
{
    ResultsBytes bytes;
    bytes.header(0).run().integer(12000);
    for (int i = 0; i < 6000; ++i)
        bytes.text(i == 0 ? "kU" : "kFoo" + std::to_string(i), 21).text("kU", 21);
    const CheckedFile checked = checkedBytes("run.res", bytes.integer(0).bytes().toStdString());
    EXPECT_EQ(checked.counts.errors, 6000);
    EXPECT_EQ(checked.counts.warnings, 5999);
    EXPECT_EQ(checked.findings.size(), 2000U);
    EXPECT_EQ(checked.findings.back().more + checked.findings[checked.findings.size() - 2].more, 9999);
}

TEST(ResultsCheckTest, LooksAtRecordsLongerThanABlock)
{
    constexpr int fieldCount = 1'200'000; // 9.6 MB
    ResultsBytes start;
    start.header(3).run().integer(fieldCount);
    QByteArray bytes = start;
    bytes.resize(350 + 21 * fieldCount + 4 + 2 * (4 + 8 * fieldCount) + 7);
    bytes.replace(350 + 21 * 1'000'000, 2, "kU");
    const int first = 354 + 21 * fieldCount;
    const int second = first + 4 + 8 * fieldCount;
    const int third = second + 4 + 8 * fieldCount;
    const int value = 4 + 8 * 1'000'000;
    bytes[first] = 3;
    bytes.replace(second + value, 8, "\0\0\0\0\0\0\xF0\x7F", 8);
    bytes[third] = 3;
    const TemporaryFolder folder;
    const CheckedFile checked = check(folder.write("run.res", bytes.toStdString()));
    std::vector<const Finding*> findings;
    for (const Finding& finding : checked.findings) {
        if (finding.code != "unknown-field")
            findings.push_back(&finding);
    }
    ASSERT_EQ(findings.size(), 4U);
    EXPECT_EQ(findings[0]->code, "node-out-of-range");
    EXPECT_EQ(findings[0]->place.offset, second);
    EXPECT_EQ(findings[1]->code, "not-finite");
    EXPECT_EQ(findings[1]->place.offset, second + value);
    EXPECT_EQ(findings[2]->code, "repeated-node");
    EXPECT_EQ(findings[2]->place.offset, third);
    EXPECT_EQ(findings[3]->code, "cut-short");
}

TEST(ResultsCheckTest, FindsRepeatedNodesThatAreFarApart)
{
    for (const Order order : bothOrders) {
        ResultsBytes bytes = start(order, largest, {"kFoo"});
        for (const int node : {1, largest, 1'000'000'000, 2, largest})
            bytes.record(node, {1});
        expectFindings(bytes,
                       {
                           {"unknown-field", warning, Effect::Ignored, 350,              "kFoo",     "kFoo"      },
                           {"repeated-node", warning, Effect::None,    423,              "",         "2147483647", "1 records"},
                           {"cut-short",               error,            Effect::None,        435, "", "5"          }
        },
                       "nodes far apart");
    }
}

/// What small files announce costs nothing.
TEST(ResultsCheckDeathTest, TakesLittleForHostileCounts)
{
    for (const Order order : bothOrders) {
        for (const int nodes : {2'000'000'000, largest, Io::mostValuesOfField, 3}) {
            for (const int fields : {2'000'000'000, largest, 204'522'253, 0x2000'0000, 1}) {
                ResultsBytes bytes(order);
                bytes.header(nodes).run().integer(fields).text("kU", 21).integer(0).record(1, {1});
                const TemporaryFolder folder;
                const std::string path = folder.write("run.res", bytes.bytes().toStdString());
                inAProcessOfItsOwn([&] {
#ifndef NEREO_SANITIZER
                    const rlim_t limit = rlim_t(memory("VmSize:")) + 64 * 1024 * 1024;
                    const rlimit limits {limit, limit};
                    ASSERT_EQ(setrlimit(RLIMIT_AS, &limits), 0);
#endif
                    const LoadWatch watch("of hostile counts");
                    const CheckedFile checked = check(path);
                    EXPECT_EQ(checked.counts.errors, 1) << linesOf(checked);
                });
            }
        }
    }
}

TEST(ResultsCheckTest, SaysWhatCannotBeRead)
{
    CheckOptions options;
    options.kind = FileKind::Results;
    const TemporaryFolder folder;
    for (const std::string& path : {folder.path(), folder.path("missing.res")}) {
        const CheckedFile checked = check(path, options);
        ASSERT_EQ(checked.findings.size(), 1U);
        EXPECT_EQ(checked.findings[0].code, "cannot-open");
        EXPECT_EQ(checked.findings[0].effect, Effect::Fails);
    }
    const CheckedFile checked = check("/proc/self/mem", options); // opens, but there is nothing at 0
    ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
    EXPECT_EQ(checked.findings[0].code, "cannot-open");
    EXPECT_EQ(checked.findings[0].effect, Effect::None);
    EXPECT_EQ(checked.findings[0].place.offset, 0);
}

TEST(ResultsCheckTest, ReadsAPipe)
{
    const TemporaryFolder folder;
    const Pipe pipe(folder.path("pipe.res"), with(QDataStream::BigEndian, firstRecord, 9).toStdString());
    const CheckedFile checked = check(pipe.path());
    EXPECT_EQ(checked.kind, FileKind::Results);
    ASSERT_EQ(checked.findings.size(), 1U);
    EXPECT_EQ(checked.findings[0].code, "node-out-of-range");
}

/// A line for each value: address, offset+length, what stands there, what a load makes of it.
std::string outlined(const QByteArray& bytes)
{
    const TemporaryFolder folder;
    std::string lines;
    const auto write = [&lines](const Item& item) {
        lines += item.address.toStdString() + ' ' + std::to_string(item.place.offset) + '+'
            + std::to_string(item.length) + " [" + item.spelling.toStdString() + "] "
            + item.value.toString().toStdString() + '\n';
    };
    EXPECT_TRUE(outline(folder.write("run.res", bytes.toStdString()), FileKind::Results, write));
    return lines;
}

const std::string headerLines = "version 4+12 [2023.1.7] 2023.1.7.0\n"
                                "date 16+19 [2024-05-18 14:22:47] 2024-05-18 14:22:47\n"
                                "title 42+17 [Lid-driven cavity] Lid-driven cavity\n"
                                "nodes 298+4 [4] 4\n"
                                "elements 302+4 [77] 77\n";
const std::string runLines = "iteration/current 310+4 [500] 500\n"
                             "iteration/starting 314+4 [100] 100\n"
                             "time-step/current 318+4 [8] 8\n"
                             "time-step/starting 322+4 [3] 3\n"
                             "time 326+8 [1.25] 1.25\n"
                             "time-step/size 334+8 [0.125] 0.125\n";

TEST(ResultsOutlineTest, TellsTheFactsAndFields)
{
    for (const Order order : bothOrders) {
        EXPECT_EQ(outlined(whole(order)), headerLines + runLines + "kU 350+2 [kU] 4\n" + "kP 371+2 [kP] 4\n");
        EXPECT_EQ(outlined(start(order, 4, {"kU", "kU", "a/b", "", "kFoo", "kFoo"})),
                  headerLines + runLines
                      + "kU 350+2 [kU] 4\n"
                        "kU#2 371+2 [kU] 0\n"
                        "a%2Fb 392+3 [a/b] 0\n"
                        "#4 413+0 [] 0\n"
                        "kFoo 434+4 [kFoo] 0\n"
                        "kFoo#2 455+4 [kFoo] 0\n");
    }
}

TEST(ResultsOutlineTest, TellsWhatIsThere)
{
    for (const Order order : bothOrders) {
        const QByteArray bytes = whole(order);
        EXPECT_EQ(outlined(bytes.left(310)), headerLines);
        EXPECT_EQ(outlined(bytes.left(345)), headerLines + runLines);
        EXPECT_EQ(outlined(bytes.left(372)), headerLines + runLines + "kU 350+2 [kU] 4\nk 371+1 [k] 0\n");
        EXPECT_EQ(outlined(bytes.left(43)),
                  headerLines.substr(0, headerLines.find("title")) + "title 42+1 [L] L\n");
        EXPECT_EQ(outlined(bytes.left(15)), "");
        EXPECT_EQ(outlined({}), "");
        EXPECT_EQ(outlined(with(order, 306, 0)), headerLines);
        EXPECT_EQ(outlined(with(order, 342, 0)), headerLines);
    }
}

} // namespace
} // namespace Nereo::Inspection
