#include "support/TemporaryFolder.h"

#include <FileIO/FileAccess.h>
#include <Inspection/TextPlaces.h>

#include <gtest/gtest.h>

#include <QTextCodec>
#include <QTextStream>

#include <numeric>
#include <optional>
#include <random>

namespace Nereo::Inspection {
namespace {

using namespace std::string_literals;

/// What a load sees of a file.
QString streamed(const std::string& path)
{
    Io::FileEndingAtFailure device;
    EXPECT_TRUE(Io::openFile(device, path, QIODevice::ReadOnly | QIODevice::Text));
    QTextStream in(&device);
    Io::configure(in);
    return in.readAll();
}

/// Remembers what it hears.
class Recorder : public Listener {
public:
    bool wantsItems() const override { return false; }
    void item(const Item&) override {}
    void finding(const Discovery& discovery) override { discoveries.push_back(discovery); }

    std::vector<Discovery> discoveries;
};

/// That each character of the stream has a place, and that the bytes there are that character.
void expectPlacesOf(const std::string& path)
{
    const QString text = streamed(path);
    const InputFile file(path);
    TextPlaces places(file);
    EXPECT_EQ(places.place(text.size()).offset, file.size());
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == QChar::ReplacementCharacter || text[i].isSurrogate())
            continue;
        ASSERT_EQ(places.text(i, i + 1), text.mid(i, 1)) << i;
    }
}

std::string inUtf16(const QString& text, bool isLittleEndian)
{
    std::string bytes = isLittleEndian ? "\xFF\xFE" : "\xFE\xFF";
    for (const QChar character : text) {
        bytes += char(isLittleEndian ? character.cell() : character.row());
        bytes += char(isLittleEndian ? character.row() : character.cell());
    }
    return bytes;
}

TEST(TextPlacesTest, CountsLinesColumnsAndBytes)
{
    struct Row {
        std::string bytes;
        qint64 index;
        Place place;
    };
    const Row rows[] = {
        {"abc",                            0,  {1, 1, 0} },
        {"abc",                            2,  {1, 3, 2} },
        {"abc",                            3,  {1, 4, 3} },
        {"abc",                            99, {1, 4, 3} },
        {"abc\nd",                         3,  {1, 4, 3} },
        {"abc\nd",                         4,  {2, 1, 4} },
        {"abc\n",                          4,  {2, 1, 4} },
        {"abc\r\nd",                       3,  {1, 4, 3} }, // a line ends before its carriage return
        {"abc\r\nd",                       4,  {2, 1, 5} },
        {"a\rb",                           1,  {1, 3, 2} }, // another carriage return is a character that a load doesn't see
        {"\xC3\xA4x",                      1,  {1, 2, 2} },
        {"\xF0\x9F\x98\x80x",              1,  {1, 1, 0} },
        {"\xF0\x9F\x98\x80x",              2,  {1, 2, 4} }, // one character, though it takes two numbers
        {"\xEF\xBB\xBFx",                  0,  {1, 1, 3} },
        {"\xFFx",                          1,  {1, 2, 1} },
        {"\xFE\xFF\0a\0\n\0b"s,            2,  {2, 1, 6} },
        {"\xFF\xFE\x3D\xD8\x00\xDEx\0"s,   2,  {1, 2, 6} },
        {"\0\0\xFE\xFF\0\1\xF6\0\0\0\0x"s, 2,  {1, 2, 8} },
        {"\0\0\xFE\xFF\0\0\0xab"s,         1,  {1, 2, 10}}, // half a character at the end
        {"\xFE\xFF\0x\xD8\x3D"s,           1,  {1, 2, 4} }, // half a pair
        {"\xFE\xFF\0x\xD8\x3D"s,           2,  {1, 3, 6} },
        {"",                               0,  {1, 1, 0} },
    };
    for (const auto& [bytes, index, place] : rows) {
        const TemporaryFolder folder;
        const InputFile file(folder.write("file", bytes));
        const Place found = TextPlaces(file).place(index);
        EXPECT_EQ(found.line, place.line) << bytes << ' ' << index;
        EXPECT_EQ(found.column, place.column) << bytes << ' ' << index;
        EXPECT_EQ(found.offset, place.offset) << bytes << ' ' << index;
    }
}

TEST(TextPlacesTest, FindsTheCharactersOfAStream)
{
    const TemporaryFolder folder;
    std::mt19937 random(13); // NOLINT(bugprone-random-generator-seed)
    const std::string pieces[] = {"a",
                                  "bc ",
                                  "\n",
                                  "\r\n",
                                  "\r",
                                  "\xC3\xA4",
                                  "\xE2\x82\xAC",
                                  "\xF0\x9F\x98\x80",
                                  "\xE2\x82",
                                  "\xFF",
                                  "\xC3",
                                  "\xEF\xBB\xBF",
                                  "\xED\xA0\x80",
                                  "\xF0\x9F",
                                  "\0"s,
                                  "\xE0\x80",
                                  std::string(3000, 'x')};
    for (int trial = 0; trial < 200; ++trial) {
        std::string bytes;
        const std::size_t size = trial < 150 ? random() % 40 : 16384 + random() % 40000;
        while (bytes.size() < size) {
            bytes += pieces[random() % (trial % 2 == 0 ? 9 : std::size(pieces))];
            if (bytes.size() > 16384 - 6000 && bytes.size() < 16384 - 100)
                bytes.resize(16384 - random() % 8, 'y'); // so that something ends where a block does
        }
        SCOPED_TRACE(trial);
        expectPlacesOf(folder.write(std::to_string(trial), bytes));
        if (HasFailure())
            return;
    }
}

TEST(TextPlacesTest, FindsTheCharactersInOtherEncodings)
{
    const TemporaryFolder folder;
    QString text;
    for (int i = 0; i < 3000; ++i)
        text += QString::fromUtf8("\xC3\xA4"
                                  "bc\r\n\xF0\x9F\x98\x80\r\xE2\x82\xAC");
    for (const bool isLittleEndian : {false, true}) {
        const std::string bytes = inUtf16(text, isLittleEndian);
        expectPlacesOf(folder.write("whole", bytes));
        expectPlacesOf(folder.write("odd", bytes + 'x'));
    }
}

/// A character of a file, by what one sees who goes from byte to byte.
struct Seen {
    Place place;
    qint64 length;
};

using LengthOf = int (*)(uint character); ///< in bytes

/// An entry for each number of a text without a byte-order mark.
std::vector<Seen> seenIn(const QVector<uint>& characters, LengthOf lengthOf)
{
    std::vector<Seen> seen;
    Place place {1, 1, 0};
    for (int i = 0; i < characters.size(); ++i) {
        const bool isReturn = characters[i] == '\r';
        const bool endsLine = isReturn && i + 1 < characters.size() && characters[i + 1] == '\n';
        qint64 length = lengthOf(characters[i]);
        if (endsLine)
            length += lengthOf(characters[++i]);
        if (!isReturn || endsLine)
            seen.insert(seen.end(), QChar::requiresSurrogates(characters[i]) ? 2 : 1, {place, length});
        place.offset += length;
        ++place.column;
        if (characters[i] == '\n')
            place = {place.line + 1, 1, place.offset};
    }
    return seen;
}

/// In their order, and in any.
void expectPlaces(TextPlaces& places, const std::vector<Seen>& seen, std::mt19937& random)
{
    std::vector<std::size_t> asked(seen.size());
    std::iota(asked.begin(), asked.end(), std::size_t(0));
    for (int trial = 0; trial < 1000 && !seen.empty(); ++trial)
        asked.push_back(random() % seen.size());
    for (const std::size_t i : asked) {
        const auto index = qint64(i);
        ASSERT_EQ(places.place(index), seen[i].place) << i;
        ASSERT_EQ(places.length(index, index + 1), seen[i].length) << i;
    }
}

int lengthInUtf8(uint character)
{
    return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

int lengthInUtf16(uint character)
{
    return QChar::requiresSurrogates(character) ? 4 : 2;
}

int lengthInUtf32(uint)
{
    return 4;
}

int lengthInLatin1(uint)
{
    return 1;
}

TEST(TextPlacesTest, GivesEachCharacterItsPlaceInAnyEncoding)
{
    const std::string pieces[] = {
        "a",
        "bc ",
        "xy\n",
        "\n",
        "\r\n",
        "\t",
        std::string(3000, 'x'),
        "\r",
        "\x01",
        "\0"s,
        "\x7F",
        "\xC3\xA4", // of one byte in other encodings
        "\xC3\xA4\xC3\xB6",
        "\xC3\xBF",
        "\xE2\x82\xAC",
        "\xF0\x9F\x98\x80",
        "\xEE\x80\x80",
        "\xED\x9F\xBF",
    };
    constexpr std::size_t withoutFaults = 7;
    constexpr std::size_t inLatin1 = 14;
    struct Row {
        const char* codec;
        LengthOf lengthOf;
        std::optional<TextPlaces::Encoding> encoding; ///< none for one of single bytes
    };
    const Row rows[] = {
        {"UTF-8",      lengthInUtf8,   TextPlaces::Encoding::Utf8             },
        {"UTF-16LE",   lengthInUtf16,  TextPlaces::Encoding::Utf16LittleEndian},
        {"UTF-16BE",   lengthInUtf16,  TextPlaces::Encoding::Utf16            },
        {"UTF-32LE",   lengthInUtf32,  TextPlaces::Encoding::Utf32LittleEndian},
        {"ISO 8859-1", lengthInLatin1, std::nullopt                           },
    };
    const TemporaryFolder folder;
    std::mt19937 random(5); // NOLINT(bugprone-random-generator-seed)
    for (const auto& [codecName, lengthOf, encoding] : rows) {
        QTextCodec* const codec = QTextCodec::codecForName(codecName);
        ASSERT_NE(codec, nullptr);
        const std::size_t all = encoding ? std::size(pieces) : inLatin1;
        for (int trial = 0; trial < 40; ++trial) {
            const int size = trial < 30 ? int(random() % 40) : 16384 + int(random() % 20000);
            QString text;
            while (text.size() < size)
                text += QString::fromStdString(pieces[random() % (trial % 3 == 0 ? withoutFaults : all)]);
            QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
            QByteArray bytes = codec->fromUnicode(text.constData(), text.size(), &state);
            const std::vector<Seen> seen = seenIn(text.toUcs4(), lengthOf);
            if (encoding == TextPlaces::Encoding::Utf32LittleEndian) // has room for both halves of a pair
                bytes.truncate(4 * text.toUcs4().size());
            const InputFile file(folder.write("file", bytes.toStdString()));
            TextPlaces places = encoding ? TextPlaces(file, *encoding) : TextPlaces(file, *codec);
            SCOPED_TRACE(codecName + (' ' + std::to_string(trial)));
            expectPlaces(places, seen, random);
            EXPECT_EQ(places.text(0, text.size()), QString(text).remove(QLatin1Char('\r')));
            if (HasFailure())
                return;
        }
    }
}

TEST(TextPlacesTest, FindsPlacesInAnyOrder)
{
    const TemporaryFolder folder;
    std::string bytes;
    for (int i = 0; i < 20000; ++i)
        bytes += "\xC3\xA4\r\n";
    const InputFile file(folder.write("file", bytes));
    TextPlaces places(file);
    for (const qint64 line : {20000, 1, 12000, 11999, 4, 19999}) {
        const Place place = places.place(2 * (line - 1));
        EXPECT_EQ(place.line, line);
        EXPECT_EQ(place.column, 1);
        EXPECT_EQ(place.offset, 4 * (line - 1));
    }
}

TEST(TextPlacesTest, CountsBytes)
{
    const TemporaryFolder folder;
    const InputFile file(folder.write("file", "a\xC3\xA4\rb\xF0\x9F\x98\x80\r\nc"));
    TextPlaces places(file);
    EXPECT_EQ(places.length(0, 2), 3);
    EXPECT_EQ(places.length(0, 3), 5); // with the carriage return between
    EXPECT_EQ(places.length(1, 2), 2); // without the one behind
    EXPECT_EQ(places.length(3, 5), 4);
    EXPECT_EQ(places.length(5, 6), 2);
    EXPECT_EQ(places.length(2, 2), 0);
    EXPECT_EQ(places.length(6, 99), 1);
}

TEST(TextPlacesTest, TellsOfWhatIsNoCharacter)
{
    struct Row {
        std::string bytes;
        std::string faults; // and their offsets
    };
    const Row rows[] = {
        {"abc\r\n\xC3\xA4",                    ""                                                                     },
        {"a\xFF\xFE\n\xFF",                    "NotUtf8 1, NotUtf8 4, "                                               },
        {"a\rb\r\r\n\r",                       "StrayCarriageReturn 1, StrayCarriageReturn 3, StrayCarriageReturn 6, "},
        {"a\0\0"s,                             "Nul 1, Nul 2, "                                                       },
        {"a\xE2\x82",                          "NotUtf8AtEnd 1, "                                                     },
        {"\xFE\xFF\xD8\0\0a\xDC\0\0\n\xD8\0"s, "NotUtf8 2, NotUtf8 10, "                                              },
        {"\xFE\xFF\0a\0"s,                     "NotUtf8AtEnd 4, "                                                     },
        {"\0\0\xFE\xFF\0\0\xD8\0\0\x11\0\0"s,  "NotUtf8 4, "                                                          },
    };
    for (const auto& [bytes, faults] : rows) {
        const TemporaryFolder folder;
        const InputFile file(folder.write("file", bytes));
        Recorder recorder;
        TextPlaces(file).reportFaults(recorder);
        std::string found;
        for (const Discovery& discovery : recorder.discoveries)
            found += rowOf(discovery.rule).name + (' ' + std::to_string(discovery.place.offset)) + ", ";
        EXPECT_EQ(found, faults) << bytes;
    }
}

TEST(TextPlacesTest, DoesNotTellTwice)
{
    const TemporaryFolder folder;
    const InputFile file(folder.write("file", "a\xFF\nb\xFF\nc\xFF\nd\xFF\n"));
    TextPlaces places(file);
    Recorder recorder;
    places.addPart({3, 5, {}, true});
    places.addPart({6, 8, "c", false});
    places.reportFaults(3, recorder);
    EXPECT_EQ(recorder.discoveries.size(), 1U);
    places.reportFaults(6, recorder);
    EXPECT_EQ(recorder.discoveries.size(), 1U); // somebody has told of the second
    places.reportFaults(7, recorder);
    EXPECT_EQ(recorder.discoveries.size(), 1U);
    places.reportFaults(recorder);
    ASSERT_EQ(recorder.discoveries.size(), 3U);
    EXPECT_EQ(recorder.discoveries[0].address, "");
    EXPECT_EQ(recorder.discoveries[1].address, "c");
    EXPECT_EQ(recorder.discoveries[1].place.line, 3);
    EXPECT_EQ(recorder.discoveries[1].found, "FF");
    EXPECT_EQ(recorder.discoveries[2].place.line, 4);
}

TEST(TextPlacesTest, GivesTheEndForWhatAShrunkFileNoLongerHas)
{
    const TemporaryFolder folder;
    const InputFile file(folder.write("file", std::string(20000, 'x')));
    TextPlaces places(file);
    const Place end {1, 20001, 20000};
    ASSERT_EQ(places.place(20000), end);
    folder.write("file", std::string(17000, 'x'));
    EXPECT_EQ(places.place(100).offset, 100);
    for (const qint64 missing : {19000, 19001, 17000})
        EXPECT_EQ(places.place(missing), end) << missing;
    EXPECT_EQ(places.place(16999), (Place {1, 17000, 16999}));
    EXPECT_EQ(places.text(16990, 19000).size(), 10);
    EXPECT_EQ(places.length(16990, 19000), 3010);
}

TEST(TextPlacesTest, FindsTheFirstBadByte)
{
    const TemporaryFolder folder;
    const auto firstBadByte = [&](const std::string& bytes) {
        return TextPlaces(InputFile(folder.write("file", bytes))).firstBadByte();
    };
    EXPECT_EQ(firstBadByte("abc\r"), Place());
    EXPECT_EQ(firstBadByte("a\n\r\xFF"), (Place {2, 2, 3}));
    EXPECT_EQ(firstBadByte(std::string(40000, 'x') + "\xC3"), (Place {1, 40001, 40000}));
}

} // namespace
} // namespace Nereo::Inspection
