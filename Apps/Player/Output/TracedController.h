#pragma once

#include "Apps/Player/Output/Trace.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// A hot spot that was tapped or looked at.
struct Pick {
    std::string name;
    std::int64_t index = 0;
    bool isTap = false;

    /// What people are told of it.
    [[nodiscard]] std::string title() const {
        return name.empty() ? "hot spot " + std::to_string(index) : name;
    }
};

/// The player as the program uses it: every hook goes into the trace.
///
/// Owner:  the trace outlives the controller.
class TracedController final : public ZNTDisplayViewController {
public:
    using PickListener = std::function<void(const Pick&)>;
    using FailureListener = std::function<void(const platform::Error&)>;

    explicit TracedController(Trace& trace) : trace_(trace) {}

    void downloadImageStarted() override { note("downloadImageStarted"); }
    void downloadImageFinished() override {
        trace_.hook("downloadImageFinished");
        if (!srcImage())
            fail({platform::ErrorCode::Unsupported, "holds no picture"});
        tellChange();
    }
    void downloadImageFailedWithError(const platform::Error& error) override {
        trace_.hook("downloadImageFailedWithError", {{"error", error.detail}});
        fail(error);
    }
    void downloadVideoFailedWithError(const platform::Error& error) override {
        trace_.hook("downloadVideoFailedWithError", {{"error", error.detail}});
        fail(error);
    }
    void videoPaused() override { note("videoPaused"); }
    void videoStartedPlaying() override { note("videoStartedPlaying"); }
    void videoDidEndPlaying() override { note("videoDidEndPlaying"); }
    void videoIsLoading() override { note("videoIsLoading"); }
    void videoDidEndLoading() override { note("videoDidEndLoading"); }
    void videoPlayedToTime(double seconds) override {
        trace_.hook("videoPlayedToTime", {{"seconds", seconds}});
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

    /// Told after the trace and the failure's listener of every hook that says how the content is,
    /// but for the seconds that a video plays.
    void setChangeListener(std::function<void()> listener) {
        changeListener_ = std::move(listener);
    }

    void setFailureListener(FailureListener listener) { failureListener_ = std::move(listener); }

    /// What the content's hooks come to when it cannot be loaded; also for what never gets as far.
    void fail(const platform::Error& error) {
        failure_ = error;
        if (failureListener_)
            failureListener_(error);
        tellChange();
    }

    /// Why the content could not be loaded, once the library has said so.
    [[nodiscard]] const std::optional<platform::Error>& failure() const { return failure_; }

private:
    void note(std::string_view hook) {
        trace_.hook(hook);
        tellChange();
    }
    void tellChange() const {
        if (changeListener_)
            changeListener_();
    }

    Trace& trace_;
    PickListener pickListener_;
    FailureListener failureListener_;
    std::function<void()> changeListener_;
    std::optional<platform::Error> failure_;
};
