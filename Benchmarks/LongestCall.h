#pragma once

#include <functional>

/// The duration of a call in milliseconds.
struct CallTime {
    double wall = 0;
    /// Without the time that the thread waited in the run queue for a processor.
    double own = 0;
};

/// Times calls on the thread that created it, and keeps the longest time of each kind.
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

    int statistics_; // file descriptor of the thread's scheduler statistics
    CallTime longest_;
};
