#pragma once

#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include <map>
#include <string>

/// The number of calls of each hook in a run.
using Events = std::map<std::string, int>;

/// A player of a host application: counts its hooks, and restarts a video that has ended.
class Visitor final : public ZNTDisplayViewController {
public:
    explicit Visitor(Events& events) : events_(events) { ++alive; }
    ~Visitor() override { --alive; }
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;

    void downloadImageStarted() override { ++events_["download started"]; }
    void downloadImageFinished() override { ++events_["download finished"]; }
    void downloadImageFailedWithError(const platform::Error&) override {
        ++events_["download failed"];
    }
    void downloadVideoFailedWithError(const platform::Error&) override {
        ++events_["video failed"];
    }
    void videoPaused() override { ++events_["video paused"]; }
    void videoStartedPlaying() override { ++events_["video started"]; }
    void videoDidEndPlaying() override {
        ++events_["video ended"];
        play();
    }
    void videoIsLoading() override { ++events_["video loading"]; }
    void videoDidEndLoading() override { ++events_["video loaded"]; }
    void videoPlayedToTime(double) override { ++events_["video tick"]; }
    void detectPickedHotSpotObjectWithName(const std::string&, std::int64_t, bool byTap) override {
        ++events_[byTap ? "hot spot tapped" : "hot spot looked at"];
    }

    /// The number of instances.
    inline static int alive = 0;

private:
    Events& events_;
};
