#include "Checked.h"

#include "support/Bytes.h"
#include "support/Sanitizers.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string>
#include <vector>

/// One fault is one finding: each file that the library wrote, with one byte, one word or one title changed,
/// at every place of it.

namespace Nereo::Inspection {
namespace {

// A sanitizer takes its time.
#ifdef NEREO_SANITIZER
constexpr std::size_t everyByte = 5;
#else
constexpr std::size_t everyByte = 1;
#endif

constexpr char badByte = '\xFF'; // which is no character in UTF-8

struct WrittenFile {
    const char* name; ///< in tests/data
    FileKind kind;
};

constexpr WrittenFile texts[] = {
    {"typical-run/cavity.cfg", FileKind::ConfigurationText},
    {"typical-run/cavity.ctl", FileKind::Control          },
    {"typical-run/cavity.gbi", FileKind::GeometryBoundary },
};

constexpr WrittenFile documents[] = {
    {"typical-run/cavity.xml",    FileKind::ConfigurationXml},
    {"typical-run/materials.xml", FileKind::Materials       },
};

/// What a check says of one of the files, changed at places.
class Changed {
public:
    explicit Changed(const WrittenFile& file)
        : file_(file), name_(std::string(file.name).substr(std::string(file.name).rfind('/') + 1)),
          bytes_(readBytes(std::string(NEREO_GOLDEN_DIR "/") + file.name))
    {
        const std::size_t version = bytes_.find("@VERSION@");
        if (version != std::string::npos)
            bytes_.replace(version, std::string("@VERSION@").size(), "2024.0.0.0");
        usual_ = codesOf(bytes_);
    }

    const std::string& bytes() const { return bytes_; }

    /// The codes and addresses of the findings that the file as it was written doesn't have.
    std::vector<std::string> findings(std::size_t at, std::size_t size, const std::string& text) const
    {
        std::string bytes = bytes_;
        const std::vector<std::string> codes = codesOf(bytes.replace(at, size, text));
        std::vector<std::string> others;
        std::set_difference(codes.begin(), codes.end(), usual_.begin(), usual_.end(),
                            std::back_inserter(others));
        return others;
    }

    /// The line around a place, for messages.
    std::string around(std::size_t at) const
    {
        const std::size_t begin = bytes_.rfind('\n', at == 0 ? 0 : at - 1) + 1;
        return name_ + ": \"" + bytes_.substr(begin, bytes_.find('\n', at) - begin) + "\" at "
            + std::to_string(at - std::min(at, begin));
    }

private:
    std::vector<std::string> codesOf(const std::string& bytes) const
    {
        std::vector<std::string> codes;
        for (const Finding& finding : checkedBytes(name_, bytes, file_.kind).findings)
            codes.push_back(finding.code.toStdString() + ' ' + finding.address.toStdString());
        std::sort(codes.begin(), codes.end());
        return codes;
    }

    const WrittenFile& file_;
    std::string name_;
    std::string bytes_;
    std::vector<std::string> usual_;
};

bool isSpace(char character)
{
    return std::isspace(static_cast<unsigned char>(character)) != 0;
}

/// The places at which words begin.
std::vector<std::size_t> wordsOf(const std::string& text)
{
    std::vector<std::size_t> words;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isSpace(text[i]) && (i == 0 || isSpace(text[i - 1])))
            words.push_back(i);
    }
    return words;
}

std::size_t wordLength(const std::string& text, std::size_t begin)
{
    return std::size_t(std::find_if(text.begin() + std::ptrdiff_t(begin), text.end(), isSpace) - text.begin())
        - begin;
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all += text + '\n';
    return all;
}

template <std::size_t count>
void expectOneForEachByte(const WrittenFile (&files)[count])
{
    for (const WrittenFile& file : files) {
        const Changed changed(file);
        for (std::size_t i = 0; i < changed.bytes().size(); i += everyByte) {
            if (changed.bytes()[i] == '\n')
                continue;
            const std::vector<std::string> replaced = changed.findings(i, 1, {badByte});
            EXPECT_EQ(replaced.size(), 1U) << changed.around(i) << '\n' << joined(replaced);
        }
    }
}

TEST(OneFaultTest, OfAByteThatIsNoCharacterInATextIsOneFinding)
{
    expectOneForEachByte(texts);
}

TEST(OneFaultTest, OfAByteThatIsNoCharacterInADocumentIsOneFinding)
{
    expectOneForEachByte(documents);
}

TEST(OneFaultTest, OfACharacterTooManyOrInThePlaceOfAnotherIsOneFindingAtMost)
{
    for (const WrittenFile& file : texts) {
        const Changed changed(file);
        for (std::size_t i = 0; i < changed.bytes().size(); i += everyByte) {
            if (changed.bytes()[i] == '\n')
                continue;
            for (const std::string& text : {std::string("?"), std::string(1, '\0')}) {
                const std::vector<std::string> replaced = changed.findings(i, 1, text);
                EXPECT_LE(replaced.size(), 1U) << changed.around(i) << '\n' << joined(replaced);
            }
            const std::vector<std::string> inserted = changed.findings(i, 0, "?");
            EXPECT_LE(inserted.size(), 1U) << changed.around(i) << '\n' << joined(inserted);
        }
    }
}

TEST(OneFaultTest, OfAWordThatIsMissingOrAnotherIsOneFindingAtMost)
{
    for (const WrittenFile& file : texts) {
        const Changed changed(file);
        for (const std::size_t begin : wordsOf(changed.bytes())) {
            const std::size_t length = wordLength(changed.bytes(), begin);
            for (const char* text : {"", "abc", "1e99999", "1.5", "99999999999"}) {
                const std::vector<std::string> found = changed.findings(begin, length, text);
                EXPECT_LE(found.size(), 1U) << changed.around(begin) << " \"" << text << "\"\n"
                                            << joined(found);
            }
        }
    }
}

/// Behind the one that is too many stand the right ones. But a name is kept, whatever it is, and before the
/// variable of the sequential solver there is no other way to see the number behind it.
TEST(OneFaultTest, OfAWordTooManyIsOneFindingAtMost)
{
    for (const WrittenFile& file : texts) {
        const Changed changed(file);
        for (const std::size_t begin : wordsOf(changed.bytes())) {
            if (changed.bytes().compare(begin, 8, "kP 1e-05") == 0)
                continue;
            const std::vector<std::string> found = changed.findings(begin, 0, "abc ");
            EXPECT_LE(found.size(), 1U) << changed.around(begin) << '\n' << joined(found);
        }
    }
}

TEST(OneFaultTest, OfATitleThatIsUnknownIsOneFinding)
{
    const std::string mark = "*** ";
    for (const WrittenFile& file : texts) {
        const Changed changed(file);
        for (std::size_t at = changed.bytes().find(mark); at != std::string::npos;
             at = changed.bytes().find(mark, at + 1)) {
            const std::size_t begin = at + mark.size();
            const std::size_t length = changed.bytes().find('\n', at) - begin;
            const std::vector<std::string> found = changed.findings(begin, length, "Nobody Knows This");
            ASSERT_EQ(found.size(), 1U) << changed.around(begin) << '\n' << joined(found);
            EXPECT_EQ(found.front().rfind("unknown-section", 0), 0U) << found.front();
        }
    }
}

} // namespace
} // namespace Nereo::Inspection
