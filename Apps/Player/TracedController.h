#pragma once

#include "Apps/Player/Trace.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

/// A hot spot that was tapped or looked at.
struct Pick {
    std::string name;
    std::int64_t index = 0;
    bool isTap = false;
};

/// The player as the program uses it: every hook goes into the trace.
///
/// Owner:  the trace outlives the controller.
class TracedController final : public ZNTDisplayViewController {
public:
    using PickListener = std::function<void(const Pick&)>;

    explicit TracedController(Trace& trace) : trace_(trace) {}

    void downloadImageStarted() override { trace_.hook("downloadImageStarted"); }
    void downloadImageFinished() override { trace_.hook("downloadImageFinished"); }
    void downloadImageFailedWithError(const platform::Error& error) override {
        trace_.hook("downloadImageFailedWithError", {{"error", error.detail}});
        failure_ = error;
    }
    void detectPickedHotSpotObjectWithName(const std::string& name, std::int64_t forIndex,
                                           bool detectedByTap) override {
        trace_.hook("detectPickedHotSpotObjectWithName",
                    {{"name", name}, {"index", forIndex}, {"tap", detectedByTap}});
        if (pickListener_)
            pickListener_({name, forIndex, detectedByTap});
    }

    /// Told after the trace. Empty: nobody listens.
    void setPickListener(PickListener listener) { pickListener_ = std::move(listener); }

    /// Why the content could not be loaded, once the library has said so.
    [[nodiscard]] const std::optional<platform::Error>& failure() const { return failure_; }

private:
    Trace& trace_;
    PickListener pickListener_;
    std::optional<platform::Error> failure_;
};
