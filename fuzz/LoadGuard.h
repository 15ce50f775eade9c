#pragma once

#include <QtGlobal>

/// Holds a load to what any of them may take, for as long as the guard lives: one second of processor time
/// and 64 MiB of memory plus what the input accounts for, with a second more for each 128 MiB of that. No
/// message may be printed either, now or later. What takes more stops the process, and so becomes a finding.
///
/// Memory is counted under AddressSanitizer only.
class LoadGuard {
public:
    explicit LoadGuard(qint64 accountedBytes);
    LoadGuard(const LoadGuard&) = delete;
    LoadGuard& operator=(const LoadGuard&) = delete;
    ~LoadGuard();
};
