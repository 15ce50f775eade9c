#include "Output.h"

#include "Bytes.h"

#include <unistd.h>

namespace Nereo::Tool {

namespace {

constexpr std::size_t blockSize = 64 * 1024;

} // namespace

Output::Output()
{
    block_.reserve(blockSize);
}

Output::~Output() = default;

void Output::write(std::string_view bytes)
{
    block_ += bytes;
    if (block_.size() >= blockSize)
        flush();
}

Output& Output::operator<<(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    write({bytes.constData(), std::size_t(bytes.size())});
    return *this;
}

Output& Output::operator<<(const char* text)
{
    write(text);
    return *this;
}

void Output::flush()
{
    const int error = writeAll(STDOUT_FILENO, block_.data(), block_.size());
    block_.clear();
    if (error != 0)
        throw OutputFailure {error};
}

} // namespace Nereo::Tool
