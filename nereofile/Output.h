#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace Nereo::Tool {

/// Standard output can't be written. Nobody is told where its reader has gone.
struct OutputFailure {
    int error = 0; ///< the system's number
};

/// Standard output in blocks, as UTF-8. What can't be written throws OutputFailure.
class Output {
public:
    Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output();

    void write(std::string_view bytes);
    Output& operator<<(const QString& text);
    Output& operator<<(const char* text);

    void flush();

private:
    std::string block_;
};

} // namespace Nereo::Tool
