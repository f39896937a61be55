#pragma once

#include "Apps/Player/Output/Trace.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// A hot spot that was picked by a tap or by looking at it.
struct Pick {
    std::string name;
    std::int64_t index = 0;
    bool isTap = false;

    /// The name that the user sees.
    [[nodiscard]] std::string title() const {
        return name.empty() ? "hot spot " + std::to_string(index) : name;
    }
};

/// The program's controller: writes every hook to the trace.
///
/// Owner:  the trace must outlive the controller.
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

    /// Called after the trace. May be empty.
    void setPickListener(PickListener listener) { pickListener_ = std::move(listener); }

    /// Called after the trace and the failure listener, for every hook that changes the state of
    /// the content, but not for `videoPlayedToTime`.
    void setChangeListener(std::function<void()> listener) {
        changeListener_ = std::move(listener);
    }

    void setFailureListener(FailureListener listener) { failureListener_ = std::move(listener); }

    /// Records that the content failed to load. Also called for input that the library never
    /// receives.
    void fail(const platform::Error& error) {
        failure_ = error;
        if (failureListener_)
            failureListener_(error);
        tellChange();
    }

    /// Why the content failed to load; nullopt as long as it has not failed.
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
