#include "Benchmarks/Soak/Soak.h"

#include "Benchmarks/ProcessCounts.h"
#include "Benchmarks/Soak/Scene.h"

#include <glib.h>
#include <malloc.h>

#include <algorithm>
#include <iostream>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace std::chrono_literals;
using nlohmann::ordered_json;
using std::chrono::steady_clock;

namespace {

constexpr int kRounds = 2;
/// libcurl keeps used connections open for reuse.
constexpr int kKeptConnections = 8;
constexpr const char* kResident = "resident KiB";
constexpr const char* kHeap = "heap KiB";
/// In ten minutes with a thousand moves each, resident memory grew by 322 KiB per minute, of which
/// 52 KiB were heap that our code is not known to hold. A leak of 10 KiB per change of content
/// would be 600 KiB per minute.
constexpr double kResidentBound = 512;
constexpr double kHeapBound = 128;

const Move& anyOf(const Moves& moves, Dice& dice) {
    const int all = std::accumulate(moves.begin(), moves.end(), 0,
                                    [](int sum, const Move& move) { return sum + move.weight; });
    int left = dice.whole(1, all);
    return *std::find_if(moves.begin(), moves.end(),
                         [&left](const Move& move) { return (left -= move.weight) <= 0; });
}

/// The heap memory in use, as reported by the C library; 0 under the sanitizers.
double heapKib() {
    const auto information = mallinfo2();
    return static_cast<double>(information.uordblks + information.hblkhd) / 1024;
}

/// Counts, and gives objects that are released asynchronously time to go: waits until the count is
/// within the limit, or until it is clear that it stays above it.
template <class Count>
int countOnce(Count count, std::optional<int> most) {
    const auto end = steady_clock::now() + (most ? 20s : 2s);
    int now = count();
    while (now > most.value_or(0) && steady_clock::now() < end) {
        std::this_thread::sleep_for(10ms);
        now = count();
    }
    return now;
}

} // namespace

Soak::Soak(const Media& media, std::uint64_t seed)
    : media_(media), seed_(seed), moves_(allMoves()), start_(steady_clock::now()) {
    ledger_.setBound(kResident, kResidentBound);
    ledger_.setBound(kHeap, kHeapBound);
}

double Soak::minutes() const {
    return std::chrono::duration<double>(steady_clock::now() - start_).count() / 60;
}

void Soak::run(std::chrono::seconds duration) {
    const auto end = start_ + duration;
    // During the warm-up, drivers and decoders fill their caches. It is limited so that enough
    // samples follow.
    warmUpMinutes_ = std::min(1.0, std::chrono::duration<double>(duration).count() / 60 / 4);
    makeEachOnce();
    do {
        try {
            playChapter();
        } catch (const std::exception& failure) {
            throw std::runtime_error("chapter of seed " + std::to_string(seed_ + chapters_) + ": " +
                                     failure.what());
        }
        takeStock();
        ++chapters_;
    } while (steady_clock::now() < end);
}

void Soak::makeEachOnce() {
    Dice dice(seed_);
    Scene scene(media_, events_, dice, zanto::HeadlessHostOptions::Time::Virtual);
    for (const Move& move : moves_)
        make(move, scene, dice);
    // The first video from the network starts threads that stay.
    const std::string address = media_.urlOf(media_.videos.front(), Media::Delivery::Quick);
    scene.replacePlayer();
    scene.player().prepareVideoWithUrl(platform::URL::URLWithString(address));
    scene.appear();
    scene.run(1s);
}

void Soak::playChapter() {
    const std::uint64_t seed = seed_ + chapters_;
    Dice dice(seed);
    Scene scene(media_, events_, dice,
                seed % 2 == 0 ? zanto::HeadlessHostOptions::Time::Virtual
                              : zanto::HeadlessHostOptions::Time::Real);
    for (int i = 0; i < kRounds; ++i)
        playRound(scene, dice);
}

void Soak::playRound(Scene& scene, Dice& dice) {
    const int moves = dice.whole(10, 40);
    for (int i = 0; i < moves; ++i)
        make(anyOf(moves_, dice), scene, dice);
    takeCensus(scene);
    ++rounds_;
}

void Soak::make(const Move& move, Scene& scene, Dice& dice) {
    ++made_[std::string(move.name)];
    move.make(scene);
    if (!dice.oneIn(3))
        scene.run(std::chrono::milliseconds(dice.whole(0, 60)));
}

void Soak::takeCensus(Scene& scene) {
    const auto enter = [this](const std::string& where, const GLCensus& census) {
        ledger_.count("textures" + where, census.textures);
        ledger_.count("buffers" + where, census.buffers);
        ledger_.count("framebuffers" + where, census.framebuffers);
        ledger_.count("renderbuffers" + where, census.renderbuffers);
        ledger_.count("programs" + where, census.programs);
        ledger_.count("shaders" + where, census.shaders);
        keptBuffers_ = std::max(keptBuffers_, census.keptBuffers);
    };
    enter(" at a small picture", scene.censusAtSmallPicture());
    ledger_.count("controllers at a small picture", Visitor::alive);
    enter(" without a controller", scene.censusWithoutPlayer());
}

void Soak::takeStock() {
    ledger_.count("controllers without a host", Visitor::alive);
    // GLib keeps idle threads for reuse for a while.
    g_thread_pool_stop_unused_threads();
    const int threads = countOnce(threadCount, ledger_.mostOf("threads"));
    const int files =
        countOnce([] { return openFileCount() - openSocketCount(); }, ledger_.mostOf("files"));
    const int connections = countOnce([] { return openSocketCount(); }, kKeptConnections);
    // Free memory in the middle of the heap is returned to the system too: its amount is random and
    // would hide memory that stays in use.
    malloc_trim(0);
    const double minute = minutes();
    std::cerr << ordered_json{{"minute", minute},
                              {"seed", seed_ + chapters_},
                              {"resident_kib", residentKib()},
                              {"heap_kib", heapKib()},
                              {"threads", threads},
                              {"files", files},
                              {"connections", connections}}
                     .dump()
              << "\n";
    if (minute < warmUpMinutes_)
        return;
    ledger_.count("threads", threads);
    ledger_.count("files", files);
    ledger_.count("connections over those kept", std::max(0, connections - kKeptConnections));
    ledger_.measure(kResident, minute, residentKib());
    ledger_.measure(kHeap, minute, heapKib());
}

ordered_json Soak::inJson() const {
    ordered_json report{{"seed", seed_},
                        {"minutes", minutes()},
                        {"warm_up_minutes", warmUpMinutes_},
                        {"chapters", chapters_},
                        {"rounds", rounds_},
                        {"buffers_kept_in_a_chapter", keptBuffers_}};
    report.update(ledger_.inJson());
    report["moves"] = made_;
    report["events"] = events_;
    return report;
}
