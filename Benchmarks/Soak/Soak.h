#pragma once

#include "Benchmarks/Soak/Dice.h"
#include "Benchmarks/Soak/Ledger.h"
#include "Benchmarks/Soak/Media.h"
#include "Benchmarks/Soak/Moves.h"
#include "Benchmarks/Soak/Visitor.h"
#include "Hosts/Headless/HeadlessHost.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdint>
#include <map>
#include <string>

class Scene;

/// Makes moves at random for so long, and looks again and again at what the process holds.
///
/// A run consists of chapters, each with a host of its own and a seed of its own: that of the run
/// for the first, one more for the next. What a chapter does can so be had again alone. Chapters
/// with an even seed are in virtual time, odd ones in the machine's. A chapter consists of rounds:
/// moves, then the same small picture, then no controller; there GL's objects are counted. Between
/// chapters, without a host, threads, files and memory are.
class Soak {
public:
    Soak(const Media& media, std::uint64_t seed);

    /// Errors: an exception for what must not happen, which names the chapter's seed.
    void run(std::chrono::seconds duration);

    [[nodiscard]] const Ledger& ledger() const { return ledger_; }
    [[nodiscard]] nlohmann::ordered_json inJson() const;

private:
    /// For whatever is made at its first use.
    void makeEachOnce();
    void playChapter();
    void playRound(Scene& scene, Dice& dice);
    void make(const Move& move, Scene& scene, Dice& dice);
    void takeCensus(Scene& scene);
    void takeStock();
    [[nodiscard]] double minutes() const;

    const Media& media_;
    const std::uint64_t seed_;
    const Moves moves_;
    const std::chrono::steady_clock::time_point start_;
    double warmUpMinutes_ = 0;
    std::uint64_t chapters_ = 0;
    int rounds_ = 0;
    int keptBuffers_ = 0; // the most of a chapter
    std::map<std::string, int> made_;
    Events events_;
    Ledger ledger_;
};
