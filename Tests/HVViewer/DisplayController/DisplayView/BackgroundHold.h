#pragma once

#include "Platform/Foundation/DispatchQueue.h"

#include <future>
#include <utility>

/// Keeps the background queue busy until it is released, so that no watermark is made.
class BackgroundHold {
public:
    BackgroundHold() {
        platform::DispatchQueue::background().async(
            [held = promise_.get_future().share()] { held.wait(); });
    }
    ~BackgroundHold() { release(); }
    BackgroundHold(const BackgroundHold&) = delete;
    BackgroundHold& operator=(const BackgroundHold&) = delete;

    void release() {
        if (!std::exchange(isReleased_, true))
            promise_.set_value();
    }

private:
    std::promise<void> promise_;
    bool isReleased_ = false;
};
