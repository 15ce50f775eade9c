// Any bytes as a control file. A number of flags that isn't the announced one stops the process: such a
// number is put right, which is a hundred times faster than a process for each load; other files are given to
// the reader as they are.

#include "Reloading.h"

#include <FileIO/ControlFileTextReader.h>
#include <FileIO/ControlFileTextWriter.h>
#include <NereoFileIO/ControlFile.h>

#include <QStringList>

#include <algorithm>

using namespace Nereo::Io;

namespace {

using Text = Format<ControlFile, ControlFileTextReader, ControlFileTextWriter>;

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

/// Its name was a byte order mark. Saved without a name it isn't a flag line any more that the number counts.
bool hasFlagWithoutName(const ControlFile& file)
{
    return file.indexOfFlag({}) >= 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ControlFile file = loadedTwice<Text>(withRightFlagCounts(inputBytes(data, size)));
    if (!hasFlagWithoutName(file))
        requireReloadable<Text>(file);
    return 0;
}
