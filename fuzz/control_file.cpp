// Any bytes as a control file. A number of flags that isn't the announced one stops the process: such a
// number is put right, which is a hundred times faster than a process for each load; other files are given to
// the reader as they are.

#include "Formats.h"
#include "Reloading.h"
#include "Requirement.h"

#include <FileIO/ControlFileTextReader.h>
#include <FileIO/ControlFileTextWriter.h>
#include <NereoFileIO/ControlFile.h>

#include <QStringList>

#include <algorithm>

using namespace Nereo::Io;

namespace {

QStringList linesOf(const QByteArray& bytes)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&device);
    configure(stream);
    QStringList lines;
    for (QString line; stream.readLineInto(&line);)
        lines.append(line);
    return lines;
}

/// The place after the section whose body begins at the place.
int endOfSection(const QStringList& lines, int place)
{
    while (place < lines.size() && !lines[place].startsWith(" *** "))
        ++place;
    return place;
}

int flagLineCount(const QStringList& lines)
{
    return int(std::count_if(lines.begin(), lines.end(),
                             [](const QString& line) { return !line.simplified().isEmpty(); }));
}

bool hasRightCount(const QStringList& section)
{
    QString text = section.join('\n');
    QTextStream in(&text);
    int count = 0;
    in >> count;
    in.readLine();
    return count == flagLineCount(in.readAll().split('\n'));
}

/// The bytes with the right number at the beginning of each flag section.
QByteArray withRightFlagCounts(const QByteArray& bytes)
{
    constexpr int firstTitle = 2; // after the header lines

    QStringList lines = linesOf(bytes);
    bool isRight = true;
    for (int begin = firstTitle + 1, end; begin < lines.size(); begin = end + 1) {
        end = endOfSection(lines, begin);
        const QStringList section = lines.mid(begin, end - begin);
        if (lines[begin - 1].mid(5).simplified() != "Flag section" || hasRightCount(section))
            continue;
        isRight = false;
        lines[begin] = QString::number(flagLineCount(section.mid(1)));
    }
    return isRight ? bytes : lines.join('\n').toUtf8();
}

void read(const QByteArray& bytes, ControlFile& file)
{
    require(readBytes<ControlFileTextReader>(bytes, file), "text that could be opened is loaded");
}

QByteArray written(const ControlFile& file)
{
    return writtenBytes<ControlFileTextWriter>(file);
}

/// What a new control file is saved as after it has loaded the bytes.
QByteArray loadedAndSaved(const QByteArray& bytes)
{
    ControlFile file;
    read(bytes, file);
    return written(file);
}

/// Its name was a byte order mark. Saved without a name it isn't a flag line any more that the number counts.
bool hasFlagWithoutName(const ControlFile& file)
{
    return file.indexOfFlag({}) >= 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = withRightFlagCounts(inputBytes(data, size));
    ControlFile file;
    read(bytes, file);
    const QByteArray saved = written(file);

    read(bytes, file);
    requireSame(written(file), saved, "a second load changes nothing");

    if (hasFlagWithoutName(file) || !isNew(saved))
        return 0;
    // The first save rounds constants, which may then be the factory's, and an empty word is lost on the way.
    const QByteArray savedAgain = loadedAndSaved(saved);
    if (!hasByteOrderMark(savedAgain))
        requireSame(loadedAndSaved(savedAgain), savedAgain, "what was saved twice and loaded is the same");
    return 0;
}
