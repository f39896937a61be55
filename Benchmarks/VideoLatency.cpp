#include "Benchmarks/VideoLatency.h"

#include "Benchmarks/HostLoop.h"
#include "Benchmarks/Spectator.h"
#include "Benchmarks/VideoClips.h"
#include "Tests/Support/HttpServer.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

using nlohmann::ordered_json;
using platform::URL;
using namespace std::chrono_literals;

namespace {

class Scene {
public:
    Scene() { warmUp(); }

    /// Times the call, and the loop iterations until the condition holds.
    void measure(const std::string& operation, const std::function<void()>& call,
                 const std::function<bool()>& until) {
        LongestCall longest;
        loop_.startCounting();
        longest.time(call);
        if (!loop_.runUntil(until, 60s))
            throw std::runtime_error(operation + ": what was waited for does not happen");
        add(operation, longest.value());
    }
    /// Times the call, and the loop iterations for a while.
    void measure(const std::string& operation, const std::function<void()>& call,
                 platform::Instant duration = 1s) {
        LongestCall longest;
        loop_.startCounting();
        longest.time(call);
        loop_.runFor(duration);
        add(operation, longest.value());
    }

    void makePlayer() {
        player_ = platform::make<Spectator>();
        loop_.embedded().setRootViewController(player_);
        loop_.embedded().appear();
    }
    void closePlayer() {
        loop_.embedded().setRootViewController(nullptr);
        player_.reset();
    }
    [[nodiscard]] Spectator& player() { return *player_; }
    /// Whether a frame has been drawn since the last measurement began.
    [[nodiscard]] bool hasShown() const { return !loop_.newFrames().empty(); }
    [[nodiscard]] const ordered_json& operations() const { return operations_; }

private:
    void warmUp() {
        makePlayer();
        player_->prepareVideoWithUrl(URL::fileURLWithPath(benchmarkClip(640, 320, 2, 1)));
        if (!loop_.runUntil([this] { return player_->ends > 0; }, 60s))
            throw std::runtime_error("the first video does not come to its end");
    }
    void add(const std::string& operation, const CallTime& call) {
        const CallTime turn = loop_.longestTurn().value();
        operations_.push_back({{"operation", operation},
                               {"call_ms", call.wall},
                               {"call_own_ms", call.own},
                               {"turn_ms", turn.wall},
                               {"turn_own_ms", turn.own},
                               {"frames", loop_.newFrames().size()}});
    }

    HostLoop loop_{{1280, 720}};
    std::shared_ptr<Spectator> player_;
    ordered_json operations_ = ordered_json::array();
};

void measureFile(Scene& scene, const URL& clip) {
    const auto hasShown = [&] { return scene.hasShown(); };
    scene.measure(
        "replace a small one", [&] { scene.player().prepareVideoWithUrl(clip); }, hasShown);
    scene.measure(
        "play", [] {}, 3s);
    scene.measure("pause", [&] { scene.player().pause(); });
    scene.measure(
        "seek while paused", [&] { scene.player().seekToTime(5.5); }, hasShown);
    scene.measure(
        "play on", [&] { scene.player().play(); }, 1s);
    scene.measure(
        "seek while playing", [&] { scene.player().seekToTime(2.5); }, 1s);
    const auto seekOften = [&] {
        for (int i = 0; i < 10; ++i)
            scene.player().seekToTime(0.7 * i);
    };
    scene.measure("ten seeks", seekOften, 2s);
    scene.measure("set the volume", [&] { scene.player().setPlayerVolume(0.3); });
    scene.measure(
        "replace while playing", [&] { scene.player().prepareVideoWithUrl(clip); }, hasShown);
    scene.measure(
        "replace while opening", [&] { scene.player().prepareVideoWithUrl(clip); }, 0ms);
    scene.measure(
        "and once more", [&] { scene.player().prepareVideoWithUrl(clip); }, hasShown);
    scene.measure("close while playing", [&] { scene.closePlayer(); });
    scene.makePlayer();
    scene.measure(
        "open", [&] { scene.player().prepareVideoWithUrl(clip); }, hasShown);
    scene.measure("close", [&] { scene.closePlayer(); });
}

void measureServer(Scene& scene, const std::string& file) {
    tests::HttpServer server;
    server.serveFile("/a.mp4", file, {.stallAfter = std::filesystem::file_size(file) * 2 / 5});
    const URL clip = *URL::URLWithString(server.url("/a.mp4"));
    scene.makePlayer();
    scene.measure(
        "open over HTTP", [&] { scene.player().prepareVideoWithUrl(clip); },
        [&] { return scene.hasShown(); });
    scene.measure(
        "play until the server stalls", [] {}, [&] { return scene.player().isLoading; });
    scene.measure("pause while stalled", [&] { scene.player().pause(); });
    scene.measure("play on while stalled", [&] { scene.player().play(); });
    scene.measure("seek while stalled", [&] { scene.player().seekToTime(9); });
    scene.measure("set the volume while stalled", [&] { scene.player().setPlayerVolume(0.3); });
    scene.measure("reload while stalled", [&] { scene.player().reloadContent(); });
    scene.measure("close while stalled", [&] { scene.closePlayer(); });
}

} // namespace

ordered_json measureVideoLatency() {
    const std::string file = benchmarkClip(3840, 1920, 10, 20);
    Scene scene;
    measureFile(scene, URL::fileURLWithPath(file));
    measureServer(scene, file);
    return scene.operations();
}
