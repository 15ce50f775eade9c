#include "Damage.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <set>
#include <utility>

namespace {

constexpr std::size_t bytesReplaced = 1024;
constexpr std::size_t mostLinesApart = 10;

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        lines.push_back(text.substr(begin, end - begin));
        begin = end;
    }
    return lines;
}

std::string joined(const std::vector<std::string>& lines)
{
    return std::accumulate(lines.begin(), lines.end(), std::string());
}

} // namespace

std::vector<DamagedFile> cutAnywhere(const std::string& whole)
{
    std::vector<DamagedFile> files;
    for (std::size_t size = 0; size <= whole.size(); ++size)
        files.push_back({"cut to " + std::to_string(size) + " bytes", whole.substr(0, size)});
    return files;
}

std::vector<DamagedFile> withAByteReplaced(const std::string& whole)
{
    std::vector<DamagedFile> files;
    for (std::size_t place = 0; place < std::min(whole.size(), bytesReplaced); ++place) {
        const char original = whole[place];
        for (const char byte : std::set<char> {'\0', '\xFF', char(~original)}) {
            if (byte == original)
                continue;
            std::string bytes = whole;
            bytes[place] = byte;
            files.push_back({"with byte " + std::to_string(place) + " replaced by "
                                 + std::to_string(static_cast<unsigned char>(byte)),
                             bytes});
        }
    }
    return files;
}

std::vector<DamagedFile> withLinesMoved(const std::string& whole)
{
    const std::vector<std::string> lines = linesOf(whole);
    std::vector<DamagedFile> files;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        const auto place = std::ptrdiff_t(i);

        std::vector<std::string> moved = lines;
        moved.erase(moved.begin() + place);
        files.push_back({"without line " + number, joined(moved)});

        moved = lines;
        moved.insert(moved.begin() + place, lines[i]);
        files.push_back({"with line " + number + " twice", joined(moved)});

        for (std::size_t j = i + 1; j < std::min(i + 1 + mostLinesApart, lines.size()); ++j) {
            moved = lines;
            std::swap(moved[i], moved[j]);
            files.push_back(
                {"with lines " + number + " and " + std::to_string(j + 1) + " swapped", joined(moved)});
        }
    }
    return files;
}

std::vector<DamagedFile> damaged(const std::string& whole)
{
    std::vector<DamagedFile> files;
    for (const auto& damage : {cutAnywhere, withAByteReplaced, withLinesMoved}) {
        std::vector<DamagedFile> more = damage(whole);
        files.insert(files.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
    }
    return files;
}
