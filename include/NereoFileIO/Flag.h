#pragma once

#include <NereoFileIO/Export.h>

#include <QString>

#include <string>

namespace Nereo::Io {

/// A named text of the control file, which may stand for a number.
///
/// The file separates words by white space, so a name or value with white space in it is cut when it is
/// loaded again.
class NEREOFILEIO_EXPORT Flag {
public:
    Flag(); ///< name and value are empty
    Flag(const Flag& other);
    Flag& operator=(const Flag& other);
    Flag(Flag&& other) noexcept;
    Flag& operator=(Flag&& other) noexcept;
    ~Flag();

    std::string name() const;
    void setName(const std::string& name);

    std::string value() const;
    void setValue(const std::string& value);
    void setValue(int value);    ///< in decimal
    void setValue(double value); ///< six significant digits: 0.001, 1e-05

    int valueAsInt() const;       ///< decimal; 0 when the value is no integer
    double valueAsDouble() const; ///< 0.0 when the value is no number, infinite past the largest

    /// Names and values are compared as texts: "1" and "1.0" differ.
    bool operator==(const Flag& other) const;
    bool operator!=(const Flag& other) const;

private:
    friend class ControlFile; // looks names up without converting each

    QString name_;
    QString value_;
};

} // namespace Nereo::Io
