#pragma once

#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Platform/Foundation/Device.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/TestClips.h"

#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Notes what a streamer tells, in order; ticks and pictures apart.
class StreamerListener final : public StreamerDelegate {
public:
    void hasNewFrame(ZNTStreamer& /*streamer*/, const platform::PixelBufferPtr& buffer) override {
        frames.push_back(buffer ? tests::readFrameNumber(*buffer).value_or(-1) : -2);
        seconds.push_back(lastTick);
    }
    void streamerWillStartLoadingItem(ZNTStreamer& /*streamer*/) override { told += "loading;"; }
    void streamerDidFinishLoadingItem(ZNTStreamer& /*streamer*/) override { told += "loaded;"; }
    void didFailToLoadItemWithError(ZNTStreamer& /*streamer*/,
                                    const platform::Error& error) override {
        told += "failed;";
        failure = error.detail;
    }
    void streamerDidPaused(ZNTStreamer& /*streamer*/) override { told += "paused;"; }
    void streamerDidStartPlaying(ZNTStreamer& /*streamer*/) override { told += "started;"; }
    void streamerDidFinishStreamingItem(ZNTStreamer& /*streamer*/) override { told += "ended;"; }
    void didPlayedToTime(ZNTStreamer& /*streamer*/, double at) override {
        ++ticks;
        lastTick = at;
    }
    std::string take() { return std::exchange(told, ""); }

    std::string told;
    std::string failure;
    std::vector<int> frames;
    std::vector<double> seconds; // of the tick that brought each frame
    int ticks = 0;
    double lastTick = std::nan("");
};

/// A streamer in virtual time, without a controller.
class StreamerScene {
public:
    explicit StreamerScene(const std::string& systemVersion = "12.0") {
        platform::Device::currentDevice().setSystemVersion(systemVersion);
    }
    ~StreamerScene() {
        streamer.reset();
        platform::Device::currentDevice().setSystemVersion("12.0");
    }
    StreamerScene(const StreamerScene&) = delete;
    StreamerScene& operator=(const StreamerScene&) = delete;

    enum class Start { ByItself, WhenTold };
    void open(const std::string& path, Start start = Start::ByItself) {
        streamer = ZNTStreamer::streamerWithUrl(platform::URL::fileURLWithPath(path));
        streamer->setDelegate(listener);
        streamer->setAutomaticallyPlayWhenReady(start == Start::ByItself);
        host->settle();
    }
    void advance(double seconds) { host->advanceTo(host->now() + platform::fromSeconds(seconds)); }

    std::unique_ptr<zanto::HeadlessHost> host = makeHost({64, 32});
    std::shared_ptr<StreamerListener> listener = std::make_shared<StreamerListener>();
    std::shared_ptr<ZNTStreamer> streamer;
};
