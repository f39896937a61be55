#pragma once

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/HookRecorder.h"
#include "Tests/Support/ShownFrame.h"
#include "Tests/Support/TestClips.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

[[nodiscard]] inline platform::URL urlOf(const std::string& path) {
    return platform::URL::fileURLWithPath(path);
}

/// 30 frames, one second, its description at the front.
[[nodiscard]] inline std::string streamableClip() {
    return tests::testClip({.more = {"-movflags", "+faststart"}});
}

/// A player in a headless host in virtual time, flat on a plane.
class PlaybackScene {
public:
    explicit PlaybackScene(platform::Size size = {256, 128}) : host(makeHost(size)) {
        host->embedded().setRootViewController(player);
        player->setDisplayMode(DisplayMode::Plane);
    }
    ~PlaybackScene() { host->embedded().setRootViewController(nullptr); }
    PlaybackScene(const PlaybackScene&) = delete;
    PlaybackScene& operator=(const PlaybackScene&) = delete;

    void play(const std::string& path) {
        player->prepareVideoWithUrl(urlOf(path));
        appear();
    }
    void appear() {
        host->embedded().appear();
        host->settle();
    }
    void advance(double seconds) { host->advanceTo(host->now() + platform::fromSeconds(seconds)); }
    void release() {
        host->embedded().setRootViewController(nullptr);
        player.reset();
    }

    [[nodiscard]] platform::ImagePtr snapshot() {
        host->settle();
        return host->embedded().snapshot(1).value();
    }
    /// The number of the frame that is on screen; 0 also while it is dark.
    [[nodiscard]] std::optional<int> shownFrame() { return tests::shownFrameNumber(*snapshot()); }

    std::unique_ptr<zanto::HeadlessHost> host;
    std::shared_ptr<HookRecorder> player = platform::make<HookRecorder>();
};
