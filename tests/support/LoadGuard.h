#pragma once

#include <string>

/// Watches over one load in this process. Where the load stops the process, or takes more than a second of
/// the processor's time, the guard says of which file, so that a failure among thousands of files is found.
class LoadGuard {
public:
    explicit LoadGuard(const std::string& file);
    LoadGuard(const LoadGuard&) = delete;
    LoadGuard& operator=(const LoadGuard&) = delete;
    ~LoadGuard();
};
