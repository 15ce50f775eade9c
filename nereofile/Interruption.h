#pragma once

namespace Nereo::Tool {

/// Ctrl-C ends the program at once, with the exit code Refused, but for the time in which a file is written:
/// that is left as it was first.
void endAtInterruption();

/// What is thrown where the program was interrupted while it wrote a file.
struct Interrupted {};

/// As long as one exists the program goes on after Ctrl-C, and has to ask.
class InterruptionDeferral {
public:
    InterruptionDeferral();
    InterruptionDeferral(const InterruptionDeferral&) = delete;
    InterruptionDeferral& operator=(const InterruptionDeferral&) = delete;
    ~InterruptionDeferral();

    static bool isRequested();
    static void throwIfRequested();
};

/// Whether a line that isn't to stay is on the terminal.
void setProgressShown(bool isShown);

/// Takes that line away.
void eraseProgress();

} // namespace Nereo::Tool
