#include "TextPlaces.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cstring>

namespace Nereo::Inspection {

namespace {

constexpr int blockSize =
    16 * 1024; // a text stream's: which bytes are taken together decides what bad ones give

const QTextCodec& utf8()
{
    static const QTextCodec* const codec = QTextCodec::codecForName("UTF-8");
    return *codec;
}

struct DetectedEncoding {
    TextPlaces::Encoding encoding;
    int markLength;
};

/// The encoding that a text stream takes for the text's, which is UTF-8 unless a mark says something else.
DetectedEncoding detectedEncoding(const QByteArray& start)
{
    constexpr int utf16 = 1015; // of the Internet's register of encodings
    constexpr int utf32 = 1017;
    using Encoding = TextPlaces::Encoding;

    const int mib = QTextCodec::codecForUtfText(start, const_cast<QTextCodec*>(&utf8()))->mibEnum();
    const bool isLittleEndian = start.startsWith('\xFF');
    if (mib == utf16 || mib == utf16 - 1 || mib == utf16 - 2)
        return {isLittleEndian ? Encoding::Utf16LittleEndian : Encoding::Utf16, 2};
    if (mib == utf32 || mib == utf32 + 1 || mib == utf32 + 2)
        return {isLittleEndian ? Encoding::Utf32LittleEndian : Encoding::Utf32, 4};
    return {Encoding::Utf8, start.startsWith("\xEF\xBB\xBF") ? 3 : 0};
}

/// Bytes as UTF-8, if all of them are that but for a character at their end that goes on behind them.
struct DecodedUtf8 {
    explicit DecodedUtf8(const QByteArray& bytes, int from)
    {
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        text = utf8().toUnicode(bytes.constData() + from, bytes.size() - from, &state);
        isValid = state.invalidChars == 0;
        bytesLeft = state.remainingChars;
    }

    QString text;
    bool isValid;
    int bytesLeft;
};

/// The next such byte; null if there is none. QByteArray takes several times as long, and every text is
/// asked.
const char* find(char byte, const char* begin, const char* end)
{
    return static_cast<const char*>(std::memchr(begin, byte, std::size_t(end - begin)));
}

bool contains(const QByteArray& bytes, char byte)
{
    return find(byte, bytes.begin(), bytes.end()) != nullptr;
}

/// Whether there is a carriage return before anything but a line feed or the end.
bool hasStrayReturn(const QByteArray& bytes)
{
    const char* at = bytes.begin();
    while ((at = find('\r', at, bytes.end())) != nullptr) {
        if (++at != bytes.end() && *at != '\n')
            return true;
    }
    return false;
}

qint64 lineFeedsIn(const QByteArray& bytes)
{
    qint64 count = 0;
    for (const char* at = bytes.begin(); (at = find('\n', at, bytes.end())) != nullptr; ++at)
        ++count;
    return count;
}

/// How many characters a text has, of which some are pairs.
qint64 charactersIn(QStringView text)
{
    return text.size() - std::count_if(text.begin(), text.end(), [](QChar c) { return c.isLowSurrogate(); });
}

/// How many bytes a well-formed character has that begins with this one.
int lengthOfUtf8(uchar first)
{
    return first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

/// The character that the bytes are, which are well-formed.
uint characterOf(const char* bytes, int length)
{
    uint character = uchar(bytes[0]) & (0xFFU >> (length + 1));
    for (int i = 1; i < length; ++i)
        character = character << 6 | (uchar(bytes[i]) & 0x3FU);
    return character;
}

uint unit16(const char* at, bool isLittleEndian)
{
    const uint first = uchar(at[0]);
    const uint second = uchar(at[1]);
    return isLittleEndian ? first | second << 8 : second | first << 8;
}

uint unit32(const char* at, bool isLittleEndian)
{
    const uint first = unit16(at, isLittleEndian);
    const uint second = unit16(at + 2, isLittleEndian);
    return isLittleEndian ? first | second << 16 : second | first << 16;
}

/// Whether a number is a character by itself that neither ends a line nor has anything to be said of it.
bool isPlain(uint unit)
{
    return (unit >= 0x20 && unit < 0xD800) || unit == '\t';
}

bool isSpace(QChar character)
{
    return character.isSpace();
}

QString hexadecimal(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

} // namespace

/// One way through the bytes of a block.
class TextPlaces::Pass {
public:
    Pass(const TextPlaces& places, const State& start, const QByteArray& bytes)
        : places_(places), bytes_(start.pending + bytes), pending_(start.pending.size()),
          base_(start.offset - start.pending.size()), state_(start)
    {
        state_.offset += bytes.size();
        state_.pending.clear();
    }

    /// Gives the characters and faults to what is there for them.
    State run(Characters* characters, std::vector<Fault>* faults)
    {
        characters_ = characters;
        faults_ = faults;
        at_ = base_ == 0 ? std::min(places_.markLength_, bytes_.size()) : 0;
        bool isValid = true;
        if (places_.encoding_ == Encoding::Utf8) {
            const DecodedUtf8 decoded(bytes_, at_);
            isValid = decoded.isValid;
            if (characters == nullptr && isValid && isPlain())
                return passPlain(decoded);
        }
        while (at_ < bytes_.size()) {
            if (passPlainCharacters())
                continue;
            const Step step = places_.stepAt(bytes_, at_, isValid, pending_);
            if (step.bytes == 0)
                break;
            pass(step);
            at_ += step.bytes;
        }
        state_.pending = bytes_.mid(at_);
        return state_;
    }

    /// What is left when there are no more bytes.
    State runEnd(Characters* characters, std::vector<Fault>* faults)
    {
        characters_ = characters;
        faults_ = faults;
        const bool isHalfPair =
            (places_.encoding_ == Encoding::Utf16 || places_.encoding_ == Encoding::Utf16LittleEndian)
            && bytes_.size() >= 2;
        if (isHalfPair) {
            pass({2, 1, 0xD800, true});
            at_ = 2;
        }
        closeReturn();
        if (at_ < bytes_.size())
            addFault(Rule::NotUtf8AtEnd, here(), hexadecimal(bytes_.mid(at_)));
        return state_;
    }

    /// What a load sees of a block of which nothing has to be said.
    const QString& plainText() const { return plainText_; }

private:
    /// Whether nothing has to be said of any character, if the bytes are well-formed.
    bool isPlain() const
    {
        const bool isEndOfReturn = state_.returnLength == 0 || bytes_.startsWith('\n');
        return isEndOfReturn && !hasStrayReturn(bytes_) && !contains(bytes_, '\0');
    }

    State passPlain(const DecodedUtf8& decoded)
    {
        plainText_ = decoded.text;
        plainText_.remove(QLatin1Char('\r'));
        const QStringView text = plainText_;
        const int lastLine = plainText_.lastIndexOf(QLatin1Char('\n'));
        if (lastLine >= 0) {
            state_.line += lineFeedsIn(bytes_);
            state_.column = 1;
            state_.isLineBad = false;
        }
        const bool endsInReturn = bytes_.endsWith('\r');
        state_.returnLength = endsInReturn;
        state_.column += charactersIn(text.mid(lastLine + 1)) + endsInReturn;
        state_.index += text.size();
        state_.pending = bytes_.right(decoded.bytesLeft);
        return state_;
    }

    Place here(int back = 0) const
    {
        return {state_.line, state_.column - (back > 0 ? 1 : 0), base_ + at_ - back};
    }

    void pass(const Step& step)
    {
        if (step.isBad && !state_.isLineBad) {
            addFault(Rule::NotUtf8, here(), hexadecimal(bytes_.mid(at_, step.bytes)));
            state_.isLineBad = true;
        }
        if (step.value == '\r') {
            closeReturn();
            state_.returnLength = step.bytes;
            ++state_.column;
            return;
        }
        if (step.value == '\n')
            return passLineFeed(step);
        closeReturn();
        if (step.value == 0)
            addFault(Rule::Nul, here());
        addCharacter(at_, step);
        ++state_.column;
    }

    void passLineFeed(const Step& step)
    {
        const bool hasReturn = state_.returnLength > 0;
        state_.column -= hasReturn;
        addCharacter(at_ - state_.returnLength, step);
        state_.returnLength = 0;
        ++state_.line;
        state_.column = 1;
        state_.isLineBad = false;
    }

    /// The carriage return before is no end of a line.
    void closeReturn()
    {
        if (state_.returnLength > 0)
            addFault(Rule::StrayCarriageReturn, here(state_.returnLength));
        state_.returnLength = 0;
    }

    void addCharacter(int begin, const Step& step)
    {
        if (characters_ != nullptr) {
            addRun(begin, at_ + step.bytes - begin, step.width);
            addUnits(step);
        }
        state_.index += step.width;
    }

    void addRun(int begin, int length, int width)
    {
        characters_->add(
            {characters_->units.size(), width, begin - pending_, length, state_.line, state_.column});
    }

    void addUnits(const Step& step)
    {
        QString& units = characters_->units;
        if (step.width == 2) {
            units += QChar(QChar::highSurrogate(step.value));
            units += QChar(QChar::lowSurrogate(step.value));
        } else {
            units += QChar(ushort(step.value));
        }
    }

    /// Passes the characters up to the next of which there may be something to say. False if there are none.
    bool passPlainCharacters()
    {
        const int count = places_.plainCharactersAt(bytes_, at_);
        if (count == 0)
            return false;
        closeReturn();
        const int length = places_.bytesOfPlain();
        if (characters_ != nullptr) {
            addRun(at_, length, 1);
            places_.appendPlain(characters_->units, bytes_.constData() + at_, count);
        }
        state_.index += count;
        state_.column += count;
        at_ += count * length;
        return true;
    }

    void addFault(Rule rule, const Place& place, const QString& found = {})
    {
        if (faults_ != nullptr)
            faults_->push_back({state_.index, rule, place, found});
    }

    const TextPlaces& places_;
    const QByteArray bytes_;
    const int pending_;
    const qint64 base_; ///< offset of the first of the bytes
    State state_;
    QString plainText_;
    int at_ = 0;
    Characters* characters_ = nullptr;
    std::vector<Fault>* faults_ = nullptr;
};

void TextPlaces::Characters::reset(int mostUnits)
{
    units = QString();
    units.reserve(mostUnits);
    runs.clear();
    lastRun = 0;
}

/// A run that goes on with the one before it becomes a part of that.
void TextPlaces::Characters::add(const Run& run)
{
    if (!runs.empty()) {
        const Run& last = runs.back();
        const bool goesOn = last.line == run.line && last.length == run.length && last.width == run.width
            && last.beginOf(run.first) == run.begin;
        if (goesOn)
            return;
    }
    runs.push_back(run);
}

/// Most often it is that of the number before, or the next one.
const TextPlaces::Run& TextPlaces::Characters::runOf(qint32 number)
{
    const auto beginsBehind = [number](const Run& run) { return number < run.first; };
    const auto isIn = [&](std::size_t run) {
        return !beginsBehind(runs[run]) && (run + 1 == runs.size() || beginsBehind(runs[run + 1]));
    };
    if (lastRun + 1 < runs.size() && !beginsBehind(runs[lastRun + 1]))
        ++lastRun;
    if (!isIn(lastRun)) {
        const auto behind = std::partition_point(runs.begin(), runs.end(),
                                                 [&](const Run& run) { return !beginsBehind(run); });
        lastRun = std::size_t(behind - runs.begin()) - 1;
    }
    return runs[lastRun];
}

TextPlaces::TextPlaces(const InputFile& file)
    : device_(file.openBytes()), isDocument_(false), encoding_(Encoding::Utf8), states_(1)
{
    const DetectedEncoding detected = detectedEncoding(bytesAt(0, blockSize));
    encoding_ = detected.encoding;
    markLength_ = detected.markLength;
}

TextPlaces::TextPlaces(const InputFile& file, Encoding encoding)
    : device_(file.openBytes()), isDocument_(true), encoding_(encoding), states_(1)
{
    const DetectedEncoding detected = detectedEncoding(bytesAt(0, blockSize));
    markLength_ = detected.encoding == encoding ? detected.markLength : 0;
}

TextPlaces::TextPlaces(const InputFile& file, const QTextCodec& codec)
    : device_(file.openBytes()), isDocument_(true), encoding_(Encoding::SingleByte), states_(1)
{
    for (std::size_t byte = 0; byte < singleBytes_.size(); ++byte) {
        const char character = char(byte);
        singleBytes_[byte] = codec.toUnicode(&character, 1)[0].unicode();
    }
}

TextPlaces::~TextPlaces() = default;

Place TextPlaces::place(qint64 index)
{
    if (openBlockOf(index)) {
        const State& start = states_[openBlock_];
        const auto number = qint32(index - start.index);
        const Run& run = characters_.runOf(number);
        return {run.line, run.columnOf(number), start.offset + run.beginOf(number)};
    }
    const State& end = states_.back();
    return {end.line, end.column, end.offset};
}

qint64 TextPlaces::length(qint64 begin, qint64 end)
{
    if (begin >= end)
        return 0;
    const qint64 first = place(begin).offset;
    if (!openBlockOf(end - 1))
        return states_.back().offset - first;
    const State& start = states_[openBlock_];
    const auto last = qint32(end - 1 - start.index);
    const Run& run = characters_.runOf(last);
    return start.offset + run.beginOf(last) + run.length - first;
}

QString TextPlaces::text(qint64 begin, qint64 end)
{
    QString text;
    while (begin < end && openBlockOf(begin)) {
        const qint64 first = states_[openBlock_].index;
        const qint64 last = std::min(end, states_[openBlock_ + 1].index);
        text += characters_.units.midRef(int(begin - first), int(last - begin));
        begin = last;
    }
    return text;
}

bool TextPlaces::reportFaults(qint64 end, Listener& listener)
{
    bool isAny = false;
    const auto tell = [&] {
        for (; told_ < faults_.size() && faults_[told_].index < end; ++told_) {
            report(faults_[told_], listener);
            isAny = true;
        }
        if (told_ == faults_.size()) {
            faults_.clear();
            told_ = 0;
        }
    };
    tell();
    while (!isAtEnd_ && states_.back().index < end) {
        passBlock();
        tell(); // block by block, so that those of a long line needn't be kept
    }
    passParts(end);
    if (passedParts_ == parts_.size()) {
        parts_.clear();
        passedParts_ = 0;
    }
    return isAny;
}

void TextPlaces::reportFaults(Listener& listener)
{
    while (passBlock()) {
        for (; told_ < faults_.size(); ++told_)
            report(faults_[told_], listener);
        faults_.clear();
        told_ = 0;
    }
    for (; told_ < faults_.size(); ++told_)
        report(faults_[told_], listener);
}

qint64 TextPlaces::spacesFrom(qint64 index)
{
    // Of a block that isn't plain there may be much to say, which nobody has asked for yet.
    while (states_.back().index <= index && (states_.size() == 1 || !plainText_.isEmpty()) && passBlock()) {}
    const qint64 behind = states_.back().index;
    const qint64 first = behind - plainText_.size();
    if (index < first || index >= behind)
        return 0;
    const auto begin = plainText_.cbegin() + (index - first);
    return std::find_if_not(begin, plainText_.cend() - 1, isSpace) - begin;
}

Place TextPlaces::firstBadByte()
{
    while (!firstBadByte_.hasOffset() && passBlock())
        faults_.clear();
    return firstBadByte_;
}

QByteArray TextPlaces::bytesAt(qint64 offset, qint64 count)
{
    return device_->seek(offset) ? device_->read(count) : QByteArray();
}

/// Goes over the next block. False where there is none.
bool TextPlaces::passBlock()
{
    if (isAtEnd_)
        return false;
    const State start = states_.back();
    const QByteArray bytes = bytesAt(start.offset, blockSize);
    const std::size_t met = faults_.size();
    Pass pass(*this, start, bytes);
    isAtEnd_ = bytes.isEmpty();
    states_.push_back(isAtEnd_ ? pass.runEnd(nullptr, &faults_) : pass.run(nullptr, &faults_));
    plainText_ = pass.plainText();
    for (std::size_t i = met; i < faults_.size() && !firstBadByte_.hasOffset(); ++i) {
        if (faults_[i].rule == Rule::NotUtf8 || faults_[i].rule == Rule::NotUtf8AtEnd)
            firstBadByte_ = faults_[i].place;
    }
    if (isDocument_)
        putNulsAside(met);
    return !isAtEnd_;
}

/// A reader says by itself where a NUL makes a document malformed, which it does nearly anywhere.
void TextPlaces::putNulsAside(std::size_t firstFault)
{
    const auto isNul = [](const Fault& fault) { return fault.rule == Rule::Nul; };
    const auto begin = faults_.begin() + std::ptrdiff_t(firstFault);
    const auto nul = std::find_if(begin, faults_.end(), isNul);
    if (nul == faults_.end())
        return;
    if (!firstNul_.hasLine())
        firstNul_ = nul->place;
    faults_.erase(std::remove_if(begin, faults_.end(), isNul), faults_.end());
}

/// Finds out about the characters of the block that this one ends in. False if there is no such character.
bool TextPlaces::openBlockOf(qint64 index)
{
    const auto isOpen = [&](std::size_t block) {
        return states_[block].index <= index && index < states_[block + 1].index;
    };
    const auto isThere = [&] { // unless the file has changed since the block was passed
        return index - states_[openBlock_].index < characters_.units.size();
    };
    while (states_.back().index <= index && !isAtEnd_)
        passBlock();
    if (index < 0 || index >= states_.back().index)
        return false;
    if (!characters_.units.isEmpty() && isOpen(openBlock_))
        return isThere();

    const auto behind = std::upper_bound(states_.begin(), states_.end(), index,
                                         [](qint64 at, const State& state) { return at < state.index; });
    openBlock_ = std::size_t(behind - states_.begin()) - 1;
    const State& start = states_[openBlock_];
    const QByteArray bytes = bytesAt(start.offset, states_[openBlock_ + 1].offset - start.offset);
    characters_.reset(bytes.size());
    Pass pass(*this, start, bytes);
    if (bytes.isEmpty())
        pass.runEnd(&characters_, nullptr);
    else
        pass.run(&characters_, nullptr);
    return isThere();
}

TextPlaces::Step TextPlaces::stepAt(const QByteArray& bytes, int at, bool isValid, int pending) const
{
    const char* const first = bytes.constData() + at;
    const int left = bytes.size() - at;
    switch (encoding_) {
    case Encoding::SingleByte:
        return {1, 1, singleBytes_[std::size_t(uchar(*first))], false};
    case Encoding::Utf8: {
        const auto lead = uchar(*first);
        if (lead < 0x80)
            return {1, 1, lead, false};
        if (isValid) {
            const int length = lengthOfUtf8(lead);
            return length <= left ? Step {length, length == 4 ? 2 : 1, characterOf(first, length), false}
                                  : Step {0, 0, 0, false};
        }
        for (int length = 1; length <= left; ++length) {
            QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
            const int width = utf8().toUnicode(first, length, &state).size();
            if (state.invalidChars
                > 0) // one byte is replaced, but all of those that the last block ended with
                return {at < pending ? pending - at : 1, 1, QChar::ReplacementCharacter, true};
            if (width > 0)
                return {length, width, characterOf(first, length), false};
        }
        return {0, 0, 0, false};
    }
    case Encoding::Utf16:
    case Encoding::Utf16LittleEndian: {
        const bool isLittleEndian = encoding_ == Encoding::Utf16LittleEndian;
        if (left < 2)
            return {0, 0, 0, false};
        const uint unit = unit16(first, isLittleEndian);
        if (!QChar::isHighSurrogate(unit))
            return {2, 1, unit, QChar::isLowSurrogate(unit)};
        if (left < 4)
            return {0, 0, 0, false};
        const uint next = unit16(first + 2, isLittleEndian);
        if (!QChar::isLowSurrogate(next))
            return {2, 1, unit, true};
        return {4, 2, QChar::surrogateToUcs4(ushort(unit), ushort(next)), false};
    }
    case Encoding::Utf32:
    case Encoding::Utf32LittleEndian:
        break;
    }
    if (left < 4)
        return {0, 0, 0, false};
    const uint unit = unit32(first, encoding_ == Encoding::Utf32LittleEndian);
    return {4, QChar::requiresSurrogates(unit) ? 2 : 1, unit, QChar::isSurrogate(unit) || unit > 0x10FFFF};
}

/// How many characters from a byte on take a number each, and neither end a line nor have anything to be said
/// of them.
int TextPlaces::plainCharactersAt(const QByteArray& bytes, int at) const
{
    const char* const begin = bytes.constData() + at;
    const int most = (bytes.size() - at) / bytesOfPlain();
    const auto countWhilePlain = [most](auto unitAt) {
        int count = 0;
        while (count < most && isPlain(unitAt(count)))
            ++count;
        return count;
    };
    switch (encoding_) {
    case Encoding::Utf8:
        return countWhilePlain([begin](int i) { return uchar(begin[i]) < 0x80 ? uint(begin[i]) : 0U; });
    case Encoding::Utf16:
        return countWhilePlain([begin](int i) { return unit16(begin + 2 * i, false); });
    case Encoding::Utf16LittleEndian:
        return countWhilePlain([begin](int i) { return unit16(begin + 2 * i, true); });
    case Encoding::SingleByte:
        return countWhilePlain([this, begin](int i) { return singleBytes_[uchar(begin[i])]; });
    default:
        return 0; // nobody uses it for long files
    }
}

int TextPlaces::bytesOfPlain() const
{
    return encoding_ == Encoding::Utf16 || encoding_ == Encoding::Utf16LittleEndian ? 2 : 1;
}

void TextPlaces::appendPlain(QString& units, const char* bytes, int count) const
{
    if (encoding_ == Encoding::Utf8) {
        units += QLatin1String(bytes, count);
        return;
    }
    const bool isLittleEndian = encoding_ == Encoding::Utf16LittleEndian;
    for (int i = 0; i < count; ++i) {
        units += encoding_ == Encoding::SingleByte ? QChar(singleBytes_[uchar(bytes[i])])
                                                   : QChar(ushort(unit16(bytes + 2 * i, isLittleEndian)));
    }
}

void TextPlaces::report(const Fault& fault, Listener& listener)
{
    passParts(fault.index);
    // A carriage return stands before the character that it is counted with.
    const bool isReturn = fault.rule == Rule::StrayCarriageReturn;
    const bool isInPart =
        passedParts_ < parts_.size() && parts_[passedParts_].begin + isReturn <= fault.index;
    if (!isInPart)
        listener.finding({fault.rule, fault.place, {}, fault.found});
    else if (!parts_[passedParts_].isCovered)
        listener.finding({fault.rule, fault.place, parts_[passedParts_].address, fault.found});
}

/// Forgets the parts that end before a character.
void TextPlaces::passParts(qint64 index)
{
    while (passedParts_ < parts_.size() && parts_[passedParts_].end <= index)
        ++passedParts_;
}

} // namespace Nereo::Inspection
