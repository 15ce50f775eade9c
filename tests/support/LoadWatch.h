#pragma once

#include <string>

/// Watches over one load in this process. Where the load stops the process, or takes more than a second of
/// the processor's time, ten under a sanitizer, the watch says of which file, so that a failure among
/// thousands of files is found.
class LoadWatch {
public:
    /// The description completes "in a file …", as "cut to 17 bytes" does.
    explicit LoadWatch(const std::string& description);
    LoadWatch(const LoadWatch&) = delete;
    LoadWatch& operator=(const LoadWatch&) = delete;
    ~LoadWatch();
};
