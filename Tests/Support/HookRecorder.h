#pragma once

#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// A player that notes every hook by its name; ticks apart, for they are many.
class HookRecorder : public ZNTDisplayViewController {
public:
    void downloadImageStarted() override { note("downloadImageStarted"); }
    void downloadImageFinished() override { note("downloadImageFinished"); }
    void downloadImageFailedWithError(const platform::Error& error) override {
        failure = error.detail;
        note("downloadImageFailedWithError");
    }
    void downloadVideoFailedWithError(const platform::Error& error) override {
        failure = error.detail;
        note("downloadVideoFailedWithError");
    }
    void videoPaused() override { note("videoPaused"); }
    void videoStartedPlaying() override { note("videoStartedPlaying"); }
    void videoDidEndPlaying() override { note("videoDidEndPlaying"); }
    void videoIsLoading() override { note("videoIsLoading"); }
    void videoDidEndLoading() override { note("videoDidEndLoading"); }
    void videoPlayedToTime(double seconds) override {
        ticks.push_back(seconds);
        if (onTick)
            onTick();
    }
    void detectPickedHotSpotObjectWithName(const std::string& name, std::int64_t forIndex,
                                           bool detectedByTap) override {
        note("picked " + name + " " + std::to_string(forIndex) + (detectedByTap ? " tap" : ""));
    }

    std::vector<std::string> take() { return std::exchange(hooks, {}); }
    [[nodiscard]] bool heard(const std::string& hook) const {
        return std::find(hooks.begin(), hooks.end(), hook) != hooks.end();
    }

    std::vector<std::string> hooks;
    std::vector<double> ticks;
    std::string failure;
    /// Called after the hook was noted.
    std::function<void(const std::string&)> onHook;
    std::function<void()> onTick;

private:
    void note(const std::string& hook) {
        hooks.push_back(hook);
        if (onHook)
            onHook(hook);
    }
};
