#include "TextFile.h"

namespace Nereo::Inspection {

namespace {

// In pieces, since the stream would make room for a whole line twice.
constexpr int pieceSize = 16 * 1024;

} // namespace

TextFile::TextFile(const InputFile& file, Listener& listener)
    : listener_(listener), hasPlaces_(listener.wantsPlaces()), device_(file.open(QIODevice::Text)),
      in_(device_.get()), places_(file)
{
    Io::configure(in_);
}

TextFile::~TextFile() = default;

bool TextFile::readLine(QString& line)
{
    if (!in_.readLineInto(&line, pieceSize))
        return false;
    for (int size = line.size(); size == pieceSize && in_.readLineInto(&piece_, pieceSize);
         size = piece_.size())
        line += piece_;
    nextIndex_ += line.size() + 1;
    return true;
}

void TextFile::skipSpaces()
{
    const qint64 spaces = hasPlaces_ ? places_.spacesFrom(nextIndex_) : 0;
    if (spaces > 0)
        nextIndex_ += in_.read(spaces).size();
}

Place TextFile::place(qint64 index)
{
    if (hasPlaces_)
        return places_.place(index);
    Place place;
    place.offset = index;
    return place;
}

void TextFile::reportCharacters()
{
    reportCharactersBefore(nextIndex_);
}

bool TextFile::reportCharactersBefore(qint64 index)
{
    return hasPlaces_ && places_.reportFaults(index, listener_);
}

void TextFile::reportEnd()
{
    if (hasPlaces_)
        places_.reportFaults(listener_);
    if (InputFile::hasFailed(*device_))
        listener_.finding({Rule::CannotRead, place(nextIndex_), {}, device_->errorString()});
}

} // namespace Nereo::Inspection
