#pragma once

#include <functional>

/// How long something took, in milliseconds.
struct CallTime {
    double wall = 0;
    /// Without what the thread waited for a processor that others had.
    double own = 0;
};

/// Times calls on the thread that made it, and keeps the longest time of each kind.
class LongestCall {
public:
    LongestCall();
    ~LongestCall();
    LongestCall(const LongestCall&) = delete;
    LongestCall& operator=(const LongestCall&) = delete;

    void time(const std::function<void()>& call);
    void reset() { longest_ = {}; }
    [[nodiscard]] const CallTime& value() const { return longest_; }

private:
    [[nodiscard]] double millisecondsInQueue() const;

    int statistics_; // the kernel's, of the thread
    CallTime longest_;
};
