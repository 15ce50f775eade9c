#pragma once

#include <QString>

#include <string>
#include <vector>

namespace Nereo::Tool {

/// A file that an operand names. "-" is standard input. What has no end that can be gone back from, such as
/// a pipe, is copied to a file without a name, so that nothing stays of it however the program ends.
class InputPath {
public:
    explicit InputPath(const std::string& operand);
    InputPath(const InputPath&) = delete;
    InputPath(InputPath&& other) noexcept;
    InputPath& operator=(const InputPath&) = delete;
    InputPath& operator=(InputPath&&) = delete;
    ~InputPath();

    const std::string& name() const { return name_; } ///< as it was given
    const std::string& path() const { return path_; } ///< to be opened

    /// Why it can't be opened for reading; empty if it can be.
    QString openError() const;

private:
    void copy(int descriptor);

    std::string name_;
    std::string path_;
    int copy_ = -1;
};

/// What to say of a file: its name, and what is the matter.
QString about(const std::string& file, const QString& what);

} // namespace Nereo::Tool
