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

/// Makes random moves for a given time and repeatedly checks the resources of the process.
///
/// A run consists of chapters, each with its own host and seed: the run's seed for the first
/// chapter, one more for each next one. So a single chapter can be repeated alone. Chapters with an
/// even seed run in virtual time, odd ones in real time. A chapter consists of rounds: moves, then
/// the same small image, then no controller; GL objects are counted in the last two states. Between
/// chapters, without a host, threads, files and memory are measured.
class Soak {
public:
    Soak(const Media& media, std::uint64_t seed);

    /// Errors: throws an exception for a failure, which names the chapter's seed.
    void run(std::chrono::seconds duration);

    [[nodiscard]] const Ledger& ledger() const { return ledger_; }
    [[nodiscard]] nlohmann::ordered_json inJson() const;

private:
    /// Makes each move once, to create everything that is created at first use.
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
    int keptBuffers_ = 0; // the most within a chapter
    std::map<std::string, int> made_;
    Events events_;
    Ledger ledger_;
};
