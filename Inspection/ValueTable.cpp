#include "ValueTable.h"

#include <QHashFunctions>

#include <algorithm>
#include <cstring>
#include <numeric>

namespace Nereo::Inspection {

namespace {

constexpr unsigned bitsOfByte = 7; // of a size; the eighth says that another byte follows
constexpr unsigned char moreBytes = 1U << bitsOfByte;

bool hasNumber(SaidValue::Type type)
{
    return type == SaidValue::Type::Number || type == SaidValue::Type::WholeNumber;
}

std::size_t sizeOfCommonBegin(std::string_view left, std::string_view right)
{
    const std::size_t most = std::min(left.size(), right.size());
    const auto end = left.begin() + std::ptrdiff_t(most);
    return std::size_t(std::mismatch(left.begin(), end, right.begin()).first - left.begin());
}

} // namespace

/// What stands before the texts of a value: it is put together here, and appended at once.
class ValueTable::Head {
public:
    void append(unsigned char byte) { bytes_[size_++] = byte; }

    void appendSize(std::size_t size)
    {
        for (; size >= moreBytes; size >>= bitsOfByte)
            append(static_cast<unsigned char>(size | moreBytes));
        append(static_cast<unsigned char>(size));
    }

    void appendNumber(double number)
    {
        std::memcpy(&bytes_[size_], &number, sizeof number);
        size_ += sizeof number;
    }

    std::string_view bytes() const { return {reinterpret_cast<const char*>(bytes_.data()), size_}; }

private:
    static constexpr std::size_t most = 64; // of a byte, a number and five sizes
    std::array<unsigned char, most> bytes_;
    std::size_t size_ = 0;
};

// A value is its flags with its type; where its address begins like another one, how far before it that
// stands and how many bytes they share; the sizes of the rest of the address, of its text if it has one and
// of what is shown if that is another; the number if it has one; and these texts.

ValueTable::Position ValueTable::append(std::string_view address, const SaidValue& value)
{
    constexpr std::size_t fewestShared = 6; // less would save nothing
    constexpr std::size_t longestRest =
        12; // with more an address is better kept whole, for others to begin like it
    const Position position = end();
    const std::size_t common = sizeOfCommonBegin(address, base());
    const bool isShared = common >= fewestShared && address.size() - common <= longestRest;
    const std::string_view rest = isShared ? address.substr(common) : address;
    const bool hasText = !value.text.empty();
    const bool isShownApart = value.shown != value.text;

    Head head;
    head.append(static_cast<unsigned char>(unsigned(value.type) | (isShared ? shared : 0U)
                                           | (hasText ? withText : 0U) | (isShownApart ? shownApart : 0U)));
    if (isShared) {
        head.appendSize(position - base_);
        head.appendSize(common);
    }
    head.appendSize(rest.size());
    if (hasText)
        head.appendSize(value.text.size());
    if (isShownApart)
        head.appendSize(value.shown.size());
    if (hasNumber(value.type))
        head.appendNumber(value.number);
    if (!isShared) {
        base_ = position + head.bytes().size();
        baseSize_ = address.size();
    }
    append({head.bytes(), rest, value.text, isShownApart ? value.shown : std::string_view()});
    if (isIndexed_)
        index(position);
    return position;
}

ValueTable::Entry ValueTable::at(Position position) const
{
    Entry entry;
    const unsigned flags = bytes_[position];
    Position at = position + 1;
    entry.value.type = SaidValue::Type(flags & typeMask);
    if ((flags & shared) != 0) {
        Position begin = position - takeSize(at);
        entry.address.begin = takeText(begin, takeSize(at));
    }
    const std::size_t restSize = takeSize(at);
    const std::size_t textSize = (flags & withText) != 0 ? takeSize(at) : 0;
    const bool isShownApart = (flags & shownApart) != 0;
    const std::size_t shownSize = isShownApart ? takeSize(at) : 0;
    if (hasNumber(entry.value.type)) {
        std::memcpy(&entry.value.number, &bytes_[at], sizeof entry.value.number);
        at += sizeof entry.value.number;
    }
    entry.address.rest = takeText(at, restSize);
    entry.value.text = takeText(at, textSize);
    entry.value.shown = isShownApart ? takeText(at, shownSize) : entry.value.text;
    entry.next = at;
    return entry;
}

ValueTable::Position ValueTable::find(std::string_view address)
{
    if (!isIndexed_) {
        isIndexed_ = true;
        for (Position position = 0; position < end(); position = at(position).next)
            index(position);
    }
    return slots_.empty() ? none : slotOf(address);
}

void ValueTable::append(std::initializer_list<std::string_view> texts)
{
    Position at = end();
    const auto addSize = [](std::size_t sum, std::string_view text) { return sum + text.size(); };
    bytes_.resize(std::accumulate(texts.begin(), texts.end(), at, addSize));
    for (const std::string_view text : texts) {
        std::copy(text.begin(), text.end(), bytes_.begin() + std::ptrdiff_t(at));
        at += text.size();
    }
}

std::string_view ValueTable::base() const
{
    return {reinterpret_cast<const char*>(bytes_.data()) + base_, baseSize_};
}

std::size_t ValueTable::takeSize(Position& position) const
{
    std::size_t size = 0;
    for (unsigned shift = 0;; shift += bitsOfByte) {
        const unsigned char byte = bytes_[position++];
        size |= std::size_t(byte & (moreBytes - 1U)) << shift;
        if (byte < moreBytes)
            return size;
    }
}

std::string_view ValueTable::takeText(Position& position, std::size_t size) const
{
    const auto* const text = reinterpret_cast<const char*>(bytes_.data()) + position;
    position += size;
    return {text, size};
}

void ValueTable::index(Position position)
{
    if ((count_ + 1) * 4 > slots_.size() * 3)
        grow();
    Position& slot = slotOf(at(position).address.text());
    if (slot == none)
        ++count_;
    else
        setFlag(slot, replaced);
    slot = position;
}

void ValueTable::grow()
{
    constexpr std::size_t fewest = 64; // a power of 2, as all sizes are
    std::vector<Position> positions(slots_.empty() ? fewest : slots_.size() * 2, none);
    positions.swap(slots_);
    for (const Position position : positions) {
        if (position != none)
            slotOf(at(position).address.text()) = position;
    }
}

/// The slot of an address, or the one that it may have.
ValueTable::Position& ValueTable::slotOf(std::string_view address)
{
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = qHashBits(address.data(), address.size(), uint(qGlobalQHashSeed())) & mask;
    while (slots_[slot] != none && at(slots_[slot]).address != address)
        slot = (slot + 1) & mask;
    return slots_[slot];
}

} // namespace Nereo::Inspection
