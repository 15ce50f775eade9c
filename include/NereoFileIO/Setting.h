#pragma once

#include <NereoFileIO/Export.h>

#include <QString>
#include <QVariant>

#include <string>

namespace Nereo::Io {

/// One named value of the solver configuration: an integer, a floating-point number or a text.
///
/// The type is the one of the value that the configuration created the setting with. A new value never
/// changes it: text from a file or a command line is converted to it, and text that is no number becomes
/// zero. There is no boolean type; switches are the integers 0 and 1.
class NEREOFILEIO_EXPORT Setting {
public:
    enum Type : int {
        Invalid = 0, ///< no value yet; the first one gives the setting its type
        Int = 1,     ///< 32 bits, signed
        Double = 2,
        String = 3
    };

    Setting(); ///< no name, no value
    Setting(const Setting& other);
    Setting& operator=(const Setting& other); ///< takes name and type as well
    Setting(Setting&& other) noexcept;
    Setting& operator=(Setting&& other) noexcept;
    ~Setting();

    /// The key under which the configuration holds the setting.
    std::string name() const;
    void setName(const std::string& name);

    Type type() const;

    /// Replaces the value by the text, converted to the setting's type. "12abc" and "" make an Int 0, as does
    /// a number past 32 bits; "1e400" makes a Double infinite. Integers are decimal. The decimal separator is
    /// a point whatever the locale.
    void setValueFromString(const std::string& text);

    void setValue(const std::string& text); ///< as setValueFromString()

    /// Replaces the value by the number. An Int takes an int and a Double either, exactly; a double makes an
    /// Int 0 unless it is an int's value. A String gets the text that valueAsString() gives of the number. A
    /// setting without a value gets the number's type.
    void setValue(int value);
    void setValue(double value);

    /// A Double is rounded, which means nothing beyond the range of an int; a String is parsed, and 0 when
    /// that fails.
    int valueAsInt() const;
    double valueAsDouble() const; ///< a String is parsed; 0.0 when that fails

    /// A Double gives the shortest text that reads back as the same number: "0.01", "1e+20".
    std::string valueAsString() const;

private:
    friend class Nereo2ConfigFile; // gives a setting its type

    Setting(const std::string& name, QVariant value);

    QString name_;
    QVariant value_;
};

} // namespace Nereo::Io
