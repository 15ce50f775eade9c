// Any bytes as the text of a number and as a number: they are read and written as Qt reads and writes them.

#include "Formats.h"
#include "FuzzBytes.h"
#include "Requirement.h"

#include <FileIO/NumberText.h>
#include <tests/support/Bits.h>

using namespace Nereo::Io;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = inputBytes(data, size);
    const QString text = QString::fromUtf8(bytes);
    require(bitsOf(parseNumber(text)) == bitsOf(text.toDouble()), "a number is read as Qt reads it");

    const auto number = FuzzBytes(bytes).number<double>();
    const QByteArray expected = number == 0.0 ? "0" : QByteArray::number(number, 'g', 6);
    const NumberText numberText(number);
    const QLatin1String written = numberText;
    requireSame(QByteArray(written.data(), written.size()), expected, "a number is written as Qt writes it");
    return 0;
}
