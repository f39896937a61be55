#include "Benchmarks/VideoSoak.h"

#include "Benchmarks/HostLoop.h"
#include "Benchmarks/ProcessCounts.h"
#include "Benchmarks/Spectator.h"
#include "Benchmarks/VideoClips.h"
#include "Tests/Support/GLObjects.h"

#include <chrono>
#include <iostream>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

using nlohmann::ordered_json;
using namespace std::chrono_literals;

namespace {

/// The resources that the process holds at one time.
struct Holdings {
    double minute = 0;
    double residentKib = 0;
    int threads = 0;
    int files = 0;
    int glObjects = 0;
};

Holdings holdingsAt(double minute) {
    const auto objects = liveGLObjects();
    return {minute, residentKib(), threadCount(), openFileCount(),
            std::accumulate(objects.begin(), objects.end(), 0)};
}

/// The slope of the least-squares line; null for fewer than two points.
ordered_json slopeOf(const std::vector<Holdings>& points) {
    if (points.size() < 2)
        return nullptr;
    const auto count = static_cast<double>(points.size());
    double minutes = 0;
    double kib = 0;
    for (const Holdings& point : points) {
        minutes += point.minute / count;
        kib += point.residentKib / count;
    }
    double products = 0;
    double squares = 0;
    for (const Holdings& point : points) {
        products += (point.minute - minutes) * (point.residentKib - kib);
        squares += (point.minute - minutes) * (point.minute - minutes);
    }
    return products / squares;
}

ordered_json inJson(const Holdings& holdings) {
    return {{"resident_kib", holdings.residentKib},
            {"threads", holdings.threads},
            {"files", holdings.files},
            {"gl_objects", holdings.glObjects}};
}

} // namespace

ordered_json measureVideoSoak(int minutes) {
    HostLoop loop({640, 360});
    const auto player = platform::make<Spectator>();
    loop.embedded().setRootViewController(player);
    loop.embedded().appear();
    player->prepareVideoWithUrl(platform::URL::fileURLWithPath(benchmarkClip(640, 320, 2, 1)));
    std::vector<Holdings> settled;
    int answered = 0;
    const auto hasEnded = [&] { return player->ends > answered; };
    const auto start = loop.embedded().now();
    for (auto next = start + 10s; next <= start + std::chrono::minutes(minutes); next += 10s) {
        while (loop.runUntil(hasEnded, next - loop.embedded().now())) {
            answered = player->ends;
            player->play();
        }
        const double minute = platform::toSeconds(loop.embedded().now() - start) / 60;
        const Holdings now = holdingsAt(minute);
        std::cerr << inJson(now).dump() << "\n";
        if (minute >= 1)
            settled.push_back(now);
    }
    if (answered == 0 || settled.empty())
        throw std::runtime_error("the video has not come to its end");
    return {{"minutes", minutes},
            {"rounds", answered},
            {"slope_kib_a_minute", slopeOf(settled)},
            {"after_a_minute", inJson(settled.front())},
            {"at_the_end", inJson(settled.back())}};
}
