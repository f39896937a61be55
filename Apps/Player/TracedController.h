#pragma once

#include "Apps/Player/Trace.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include <optional>

/// The player as the program uses it: every hook goes into the trace.
///
/// Owner:  the trace outlives the controller.
class TracedController final : public ZNTDisplayViewController {
public:
    explicit TracedController(Trace& trace) : trace_(trace) {}

    void downloadImageStarted() override { trace_.hook("downloadImageStarted"); }
    void downloadImageFinished() override { trace_.hook("downloadImageFinished"); }
    void downloadImageFailedWithError(const platform::Error& error) override {
        trace_.hook("downloadImageFailedWithError", {{"error", error.detail}});
        failure_ = error;
    }

    /// Why the content could not be loaded, once the library has said so.
    [[nodiscard]] const std::optional<platform::Error>& failure() const { return failure_; }

private:
    Trace& trace_;
    std::optional<platform::Error> failure_;
};
