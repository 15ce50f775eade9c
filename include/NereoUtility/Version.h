#pragma once

#include <NereoUtility/Export.h>

#include <QString>

#include <array>

namespace Nereo::Util {

/// A version of four numbers, written "2024.0.0.0".
///
/// Every file object carries one, that of its content: Version::Current in a new object, what the file says
/// after a load. A save writes it as it stands.
class NEREOUTILITY_EXPORT Version {
public:
    static const Version Current; ///< the version of this library

    /// The branch that this library was built from, "release" unless the build says otherwise.
    static QString Branch();

    constexpr Version() = default; ///< 0.0.0.0

    constexpr Version(int first, int second, int third, int fourth) : numbers_ {first, second, third, fourth}
    {
    }

    /// Reads up to four decimal numbers separated by dots, with or without white space around them. A number
    /// that is missing or can't be read is 0, so no text is an error: "2023.1" gives 2023.1.0.0, "next" gives
    /// 0.0.0.0.
    explicit Version(const QString& text);

    QString toString() const; ///< the four numbers joined by dots

    friend bool operator==(const Version& left, const Version& right)
    {
        return left.numbers_ == right.numbers_;
    }
    friend bool operator!=(const Version& left, const Version& right) { return !(left == right); }

private:
    std::array<int, 4> numbers_ {};
};

} // namespace Nereo::Util
