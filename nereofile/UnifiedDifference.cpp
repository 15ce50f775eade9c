#include "UnifiedDifference.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace Nereo::Tool {

namespace {

using Lines = std::vector<std::string_view>; // each with its end

constexpr std::size_t context = 3; // lines around what differs

/// Lines of the old file, in whose place those of the new one stand.
struct Change {
    std::size_t oldBegin;
    std::size_t oldEnd;
    std::size_t newBegin;
    std::size_t newEnd;
};

Lines linesOf(const QByteArray& bytes)
{
    Lines lines;
    std::string_view rest(bytes.constData(), std::size_t(bytes.size()));
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        const std::size_t size = end == std::string_view::npos ? rest.size() : end + 1;
        lines.push_back(rest.substr(0, size));
        rest.remove_prefix(size);
    }
    return lines;
}

/// Where the files agree again: at the fewest lines further on.
Change nextChange(const Lines& oldLines, const Lines& newLines, std::size_t oldBegin, std::size_t newBegin)
{
    const std::size_t oldLeft = oldLines.size() - oldBegin;
    const std::size_t newLeft = newLines.size() - newBegin;
    for (std::size_t lines = 1; lines < oldLeft + newLeft; ++lines) {
        for (std::size_t old = lines - std::min(lines, newLeft); old <= std::min(lines, oldLeft); ++old) {
            const std::size_t oldEnd = oldBegin + old;
            const std::size_t newEnd = newBegin + lines - old;
            const bool isEnd = oldEnd == oldLines.size() || newEnd == newLines.size();
            if (!isEnd && oldLines[oldEnd] == newLines[newEnd])
                return {oldBegin, oldEnd, newBegin, newEnd};
        }
    }
    return {oldBegin, oldLines.size(), newBegin, newLines.size()};
}

std::vector<Change> changesOf(const Lines& oldLines, const Lines& newLines)
{
    std::vector<Change> changes;
    std::size_t oldLine = 0;
    std::size_t newLine = 0;
    while (oldLine < oldLines.size() || newLine < newLines.size()) {
        const bool isSame =
            oldLine < oldLines.size() && newLine < newLines.size() && oldLines[oldLine] == newLines[newLine];
        if (isSame) {
            ++oldLine;
            ++newLine;
            continue;
        }
        changes.push_back(nextChange(oldLines, newLines, oldLine, newLine));
        oldLine = changes.back().oldEnd;
        newLine = changes.back().newEnd;
    }
    return changes;
}

QByteArray range(std::size_t begin, std::size_t end)
{
    const std::size_t count = end - begin;
    const QByteArray first = QByteArray::number(qulonglong(count == 0 ? begin : begin + 1));
    return count == 1 ? first : first + ',' + QByteArray::number(qulonglong(count));
}

void addLines(QByteArray& text, char mark, const Lines& lines, std::size_t begin, std::size_t end)
{
    for (std::size_t i = begin; i < end; ++i) {
        text += mark;
        text.append(lines[i].data(), int(lines[i].size()));
        if (lines[i].back() != '\n')
            text += "\n\\ No newline at end of file\n";
    }
}

/// A piece of the difference: changes that are near to each other, and what stands around them.
void addPiece(QByteArray& text, const Lines& oldLines, const Lines& newLines, const Change* first,
              const Change* last)
{
    const std::size_t before = std::min(context, first->oldBegin);
    const std::size_t after = std::min(context, oldLines.size() - last->oldEnd);
    text += "@@ -" + range(first->oldBegin - before, last->oldEnd + after) + " +"
        + range(first->newBegin - before, last->newEnd + after) + " @@\n";
    std::size_t line = first->oldBegin - before;
    for (const Change* change = first; change <= last; ++change) {
        addLines(text, ' ', oldLines, line, change->oldBegin);
        addLines(text, '-', oldLines, change->oldBegin, change->oldEnd);
        addLines(text, '+', newLines, change->newBegin, change->newEnd);
        line = change->oldEnd;
    }
    addLines(text, ' ', oldLines, line, last->oldEnd + after);
}

} // namespace

QByteArray unifiedDifference(const QString& oldName, const QString& newName, const QByteArray& oldBytes,
                             const QByteArray& newBytes)
{
    const Lines oldLines = linesOf(oldBytes);
    const Lines newLines = linesOf(newBytes);
    const std::vector<Change> changes = changesOf(oldLines, newLines);
    if (changes.empty())
        return {};
    QByteArray text = "--- " + oldName.toUtf8() + "\n+++ " + newName.toUtf8() + '\n';
    for (std::size_t first = 0, last = 0; first < changes.size(); first = ++last) {
        while (last + 1 < changes.size() && changes[last + 1].oldBegin - changes[last].oldEnd <= 2 * context)
            ++last;
        addPiece(text, oldLines, newLines, &changes[first], &changes[last]);
    }
    return text;
}

} // namespace Nereo::Tool
