#include "Benchmarks/VideoPlayback.h"

#include "Benchmarks/BarePlayback.h"
#include "Benchmarks/HostLoop.h"
#include "Benchmarks/Spectator.h"
#include "Benchmarks/VideoClips.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <stdexcept>
#include <string>
#include <vector>

using nlohmann::ordered_json;
using platform::Instant;
using namespace std::chrono_literals;

namespace {

constexpr platform::SizePx kVideo{3840, 1920};
constexpr platform::SizePx kView{1280, 720};
constexpr int kFramesPerSecond = 30;

/// The cost of some work.
struct Cost {
    std::clock_t cpu = std::clock();
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();

    [[nodiscard]] double cpuSeconds() const {
        return static_cast<double>(std::clock() - cpu) / CLOCKS_PER_SEC;
    }
    [[nodiscard]] double wallSeconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
};

/// The minimum over all whole seconds from the first frame on.
int fewestInASecond(const std::vector<Instant>& frames) {
    if (frames.empty())
        return 0;
    int fewest = kFramesPerSecond;
    for (Instant second = frames.front(); second + 1s <= frames.back(); second += 1s) {
        const auto count = std::ranges::count_if(
            frames, [&](Instant at) { return at >= second && at < second + 1s; });
        fewest = std::min(fewest, static_cast<int>(count));
    }
    return fewest;
}

void playToEnd(HostLoop& loop, Spectator& player, const std::string& path, int seconds) {
    player.ends = 0;
    player.prepareVideoWithUrl(platform::URL::fileURLWithPath(path));
    if (!loop.runUntil([&] { return player.ends > 0; }, 30s + 10s * seconds))
        throw std::runtime_error(path + " does not come to its end");
}

ordered_json measurePlayer(HostLoop& loop, Spectator& player, const std::string& path,
                           int seconds) {
    loop.startCounting();
    const Cost cost;
    playToEnd(loop, player, path, seconds);
    // At its end, the video returns to its start; that frame arrives later and is not counted.
    const auto shown =
        std::min(static_cast<int>(loop.newFrames().size()), seconds * kFramesPerSecond);
    return {{"frames", seconds * kFramesPerSecond},
            {"shown", shown},
            {"dropped", seconds * kFramesPerSecond - shown},
            {"fewest_in_a_second", fewestInASecond(loop.newFrames())},
            {"draws", loop.draws()},
            {"turns", loop.turns()},
            {"cpu_seconds", cost.cpuSeconds()},
            {"wall_seconds", cost.wallSeconds()}};
}

ordered_json measureBare(HostLoop& loop, const std::string& path, int seconds) {
    BarePlayback bare(loop.target());
    const Cost cost;
    const int drawn = bare.play(path, kVideo);
    return {{"shown", drawn},
            {"dropped", seconds * kFramesPerSecond - drawn},
            {"cpu_seconds", cost.cpuSeconds()},
            {"wall_seconds", cost.wallSeconds()}};
}

} // namespace

ordered_json measureVideoPlayback(int seconds) {
    const std::string clip = benchmarkClip(kVideo.width, kVideo.height, seconds, 20);
    HostLoop loop(kView);
    const auto player = platform::make<Spectator>();
    loop.embedded().setRootViewController(player);
    loop.embedded().appear();
    // Warms up what a process does once: libraries, shaders, the watermark.
    playToEnd(loop, *player, benchmarkClip(640, 320, 2, 1), 2);
    loop.runFor(500ms);
    const ordered_json played = measurePlayer(loop, *player, clip, seconds);
    player->pause();
    loop.runFor(500ms);
    const ordered_json bare = measureBare(loop, clip, seconds);
    return {{"view", "1280x720"},
            {"video", "3840x1920"},
            {"played", played},
            {"bare", bare},
            {"ratio", played["cpu_seconds"].get<double>() / bare["cpu_seconds"].get<double>()}};
}
