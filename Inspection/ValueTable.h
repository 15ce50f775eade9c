#pragma once

#include <NereoInspection/Export.h>

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace Nereo::Inspection {

/// What a file says at an address. The texts stand elsewhere.
struct SaidValue {
    enum class Type : char {
        Number,
        WholeNumber,
        Text,
        Element ///< has the values below its address, which ends with a slash
    };

    Type type = Type::Text;
    double number = 0.0;
    std::string_view text = {};  ///< what is compared, of a text
    std::string_view shown = {}; ///< what the file has there, for people
};

/// The values that a file says, by their addresses and in its order. There may be millions of them: each
/// takes little more than its number, its text and what is new in its address.
///
/// Addresses are looked up only when somebody asks for the first one. Most files that are compared say the
/// same in the same order, and nobody does.
class NEREOINSPECTION_EXPORT ValueTable {
public:
    using Position = std::size_t; ///< of a value
    static constexpr Position none = ~Position(0);

    /// In two pieces, since most addresses begin as one before them.
    struct Address {
        std::string_view begin;
        std::string_view rest;

        std::string text() const { return std::string(begin).append(rest); }

        friend bool operator==(const Address& left, std::string_view right)
        {
            return left.begin.size() + left.rest.size() == right.size()
                && right.substr(0, left.begin.size()) == left.begin
                && right.substr(left.begin.size()) == left.rest;
        }
        friend bool operator!=(const Address& left, std::string_view right) { return !(left == right); }
    };

    /// The views hold until a value is appended.
    struct Entry {
        Position next; ///< the position behind it
        Address address;
        SaidValue value;
    };

    /// Adds a value behind the others, and gives its position. It replaces an earlier one of its address.
    Position append(std::string_view address, const SaidValue& value);

    Position end() const { return bytes_.size(); }
    Entry at(Position position) const;

    /// The last value of an address; none if there is none.
    Position find(std::string_view address);

    /// Whether a later value has its address, as far as addresses have been looked up.
    bool isReplaced(Position position) const { return (bytes_[position] & replaced) != 0; }

    /// Whether the other file has a value at its address.
    bool isMet(Position position) const { return (bytes_[position] & met) != 0; }
    void setMet(Position position) { setFlag(position, met); }

private:
    // In the first byte of a value.
    static constexpr unsigned typeMask = 3;
    static constexpr unsigned met = 4;
    static constexpr unsigned replaced = 8;
    static constexpr unsigned shared = 16;
    static constexpr unsigned withText = 32;
    static constexpr unsigned shownApart = 64;

    class Head;

    void setFlag(Position position, unsigned flag)
    {
        bytes_[position] = static_cast<unsigned char>(bytes_[position] | flag);
    }
    std::string_view base() const;
    void append(std::initializer_list<std::string_view> texts);
    std::size_t takeSize(Position& position) const;
    std::string_view takeText(Position& position, std::size_t size) const;

    void index(Position position);
    void grow();
    Position& slotOf(std::string_view address);

    std::vector<unsigned char> bytes_;
    Position base_ = 0; // where the address stands that others begin like
    std::size_t baseSize_ = 0;
    std::vector<Position> slots_; // none where there is none
    std::size_t count_ = 0;       // of those that are taken
    bool isIndexed_ = false;
};

} // namespace Nereo::Inspection
