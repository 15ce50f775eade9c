#pragma once

#include "InputFile.h"
#include "Listener.h"

#include <NereoInspection/Place.h>

#include <QByteArray>
#include <QString>
#include <QTextCodec>

#include <array>
#include <memory>
#include <vector>

namespace Nereo::Inspection {

/// Where the characters that a stream gives of a text file stand in it, and which of its bytes are no
/// characters.
///
/// Characters are numbered from 0, as UTF-16 has them and without carriage returns and a byte-order mark,
/// since that is how a load sees them. The file is read a second time for this, in the blocks in which a text
/// stream reads it: a place is found in the time that decoding a block takes, and nothing else is kept of the
/// text.
class NEREOINSPECTION_EXPORT TextPlaces {
public:
    enum class Encoding { Utf8, Utf16, Utf16LittleEndian, Utf32, Utf32LittleEndian, SingleByte };

    /// In the encoding that a text stream finds out by itself.
    explicit TextPlaces(const InputFile& file);
    /// Of a document, whose reader has its own opinion of the encoding, and of a NUL.
    TextPlaces(const InputFile& file, Encoding encoding);
    /// The same in an encoding whose characters are a byte each.
    TextPlaces(const InputFile& file, const QTextCodec& codec);
    ~TextPlaces();

    Encoding encoding() const { return encoding_; }

    /// The place of a character; of a line feed that of the carriage return before it, since the line ends
    /// there. Past the last character it is the end of the file.
    Place place(qint64 index);

    /// How many bytes the characters from the one up to the other take.
    qint64 length(qint64 begin, qint64 end);

    /// The characters from the one up to the other.
    QString text(qint64 begin, qint64 end);

    /// What a walk knows of the characters from the one up to the other.
    struct Part {
        qint64 begin;
        qint64 end;
        QString address;
        bool isCovered; ///< there is a finding of them, so that bad characters need none of their own
    };

    /// What findings of bad characters say of a part. Parts come in the order of the file, before what is in
    /// them is reported.
    void addPart(const Part& part) { parts_.push_back(part); }

    /// Tells of the bad characters before this one, as far as they haven't been told. False if there are
    /// none.
    bool reportFaults(qint64 end, Listener& listener);

    /// Tells of all that are left.
    void reportFaults(Listener& listener);

    /// How many characters from this one on are white space, as far as that is easily told, and but for the
    /// last one of a block: what comes of the next block is the stream's to say. To be asked in the order of
    /// the file.
    qint64 spacesFrom(qint64 index);

    /// The first byte that is no character; absent if there is none.
    Place firstBadByte();

    /// The first NUL of a document, once all of it has been gone over; absent if there is none.
    Place firstNul() const { return firstNul_; }

private:
    /// What is known where a block begins.
    struct State {
        qint64 offset = 0;
        qint64 index = 0;
        qint64 line = 1;
        qint64 column = 1;
        QByteArray pending;     ///< bytes of a character that began before
        int returnLength = 0;   ///< in bytes, of the carriage return that stands before
        bool isLineBad = false; ///< the line has a bad byte before
    };

    /// Characters of a line that stand one behind the other and are alike in size.
    struct Run {
        qint32 first;  ///< the number of the first one, from that of the block
        qint32 width;  ///< how many numbers each takes
        qint32 begin;  ///< the first byte, from that of the block; negative if it stands before
        qint32 length; ///< of each, in bytes
        qint64 line;
        qint64 column; ///< of the first one

        qint32 charactersBefore(qint32 number) const { return (number - first) / width; }
        qint32 beginOf(qint32 number) const { return begin + charactersBefore(number) * length; }
        qint64 columnOf(qint32 number) const { return column + charactersBefore(number); }
    };

    /// The characters of a block.
    struct Characters {
        QString units; ///< by their numbers
        std::vector<Run> runs;
        std::size_t lastRun = 0; ///< that was asked for

        void reset(int mostUnits);
        void add(const Run& run); ///< before its units
        const Run& runOf(qint32 number);
    };

    struct Fault {
        qint64 index;
        Rule rule;
        Place place;
        QString found;
    };

    /// What stands at a byte: how many bytes and how many numbers it takes. None where the block ends before
    /// it does.
    struct Step {
        int bytes;
        int width;
        uint value;
        bool isBad;
    };

    class Pass;

    QByteArray bytesAt(qint64 offset, qint64 count);
    bool passBlock();
    void putNulsAside(std::size_t firstFault);
    bool openBlockOf(qint64 index);
    Step stepAt(const QByteArray& bytes, int at, bool isValid, int pending) const;
    int plainCharactersAt(const QByteArray& bytes, int at) const;
    int bytesOfPlain() const;
    void appendPlain(QString& units, const char* bytes, int count) const;
    void report(const Fault& fault, Listener& listener);
    void passParts(qint64 index);

    std::unique_ptr<QIODevice> device_;
    const bool isDocument_;
    Encoding encoding_;
    std::array<ushort, 256> singleBytes_ {}; ///< the characters that the bytes are, where each is one
    int markLength_ = 0;                     ///< of the byte-order mark
    std::vector<State> states_; ///< of each block that has been passed, and of the one behind them
    QString plainText_;         ///< of the last one, if all of its bytes are characters for a load
    bool isAtEnd_ = false;

    std::size_t openBlock_ = 0;
    Characters characters_;     ///< of the open block
    std::vector<Fault> faults_; ///< that were met and not told
    std::size_t told_ = 0;
    std::vector<Part> parts_;
    std::size_t passedParts_ = 0;
    Place firstBadByte_;
    Place firstNul_;
};

} // namespace Nereo::Inspection
