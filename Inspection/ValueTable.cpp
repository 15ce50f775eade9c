#include "ValueTable.h"

#include <QHashFunctions>

#include <cstring>

namespace Nereo::Inspection {

namespace {

constexpr unsigned bitsOfByte = 7; // of a size; the eighth says that another byte follows
constexpr unsigned char moreBytes = 1U << bitsOfByte;

bool hasNumber(SaidValue::Type type)
{
    return type == SaidValue::Type::Number || type == SaidValue::Type::WholeNumber;
}

} // namespace

// A value is its flags, its type, the sizes of address, text and shown text, the number if it has one, and
// the three texts. A text that is shown as it is stands there once.

ValueTable::Position ValueTable::append(std::string_view address, const SaidValue& value)
{
    const Position position = end();
    const bool isShown = value.shown == value.text;
    bytes_.push_back(0);
    bytes_.push_back(static_cast<unsigned char>(value.type));
    appendSize(address.size());
    appendSize(value.text.size());
    appendSize(isShown ? 0 : value.shown.size() + 1);
    if (hasNumber(value.type))
        appendText({reinterpret_cast<const char*>(&value.number), sizeof value.number});
    appendText(address);
    appendText(value.text);
    if (!isShown)
        appendText(value.shown);
    if (isIndexed_)
        index(position);
    return position;
}

ValueTable::Entry ValueTable::at(Position position) const
{
    Entry entry;
    entry.value.type = SaidValue::Type(bytes_[position + 1]);
    position += 2;
    const std::size_t addressSize = takeSize(position);
    const std::size_t textSize = takeSize(position);
    const std::size_t shownSize = takeSize(position);
    if (hasNumber(entry.value.type)) {
        std::memcpy(&entry.value.number, &bytes_[position], sizeof entry.value.number);
        position += sizeof entry.value.number;
    }
    entry.address = takeText(position, addressSize);
    entry.value.text = takeText(position, textSize);
    entry.value.shown = shownSize == 0 ? entry.value.text : takeText(position, shownSize - 1);
    entry.next = position;
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

void ValueTable::appendSize(std::size_t size)
{
    for (; size >= moreBytes; size >>= bitsOfByte)
        bytes_.push_back(static_cast<unsigned char>(size | moreBytes));
    bytes_.push_back(static_cast<unsigned char>(size));
}

void ValueTable::appendText(std::string_view text)
{
    bytes_.insert(bytes_.end(), text.begin(), text.end());
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
    Position& slot = slotOf(at(position).address);
    if (slot == none)
        ++count_;
    else
        bytes_[slot] |= Replaced;
    slot = position;
}

void ValueTable::grow()
{
    constexpr std::size_t fewest = 64; // a power of 2, as all sizes are
    std::vector<Position> positions(slots_.empty() ? fewest : slots_.size() * 2, none);
    positions.swap(slots_);
    for (const Position position : positions) {
        if (position != none)
            slotOf(at(position).address) = position;
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
