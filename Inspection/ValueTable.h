#pragma once

#include <NereoInspection/Export.h>

#include <QtGlobal>

#include <cstddef>
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
/// takes little more than its address and its text.
///
/// Addresses are looked up only when somebody asks for the first one. Most files that are compared say the
/// same in the same order, and nobody does.
class NEREOINSPECTION_EXPORT ValueTable {
public:
    using Position = std::size_t; ///< of a value
    static constexpr Position none = ~Position(0);

    /// The views hold until a value is appended.
    struct Entry {
        Position next; ///< the position behind it
        std::string_view address;
        SaidValue value;
    };

    /// Adds a value behind the others, and gives its position. It replaces an earlier one of its address.
    Position append(std::string_view address, const SaidValue& value);

    Position end() const { return bytes_.size(); }
    Entry at(Position position) const;

    /// The last value of an address; none if there is none.
    Position find(std::string_view address);

    /// Whether a later value has its address, as far as addresses have been looked up.
    bool isReplaced(Position position) const { return (bytes_[position] & Replaced) != 0; }

    /// Whether the other file has a value at its address.
    bool isMet(Position position) const { return (bytes_[position] & Met) != 0; }
    void setMet(Position position) { bytes_[position] |= Met; }

private:
    enum Flag : unsigned char { Met = 1, Replaced = 2 };

    void appendSize(std::size_t size);
    void appendText(std::string_view text);
    std::size_t takeSize(Position& position) const;
    std::string_view takeText(Position& position, std::size_t size) const;

    void index(Position position);
    void grow();
    Position& slotOf(std::string_view address);

    std::vector<unsigned char> bytes_;
    std::vector<Position> slots_; // none where there is none
    std::size_t count_ = 0;       // of those that are taken
    bool isIndexed_ = false;
};

} // namespace Nereo::Inspection
