#include "Benchmarks/Soak/Soak.h"
#include "Platform/Foundation/Bundle.h"
#include "Platform/Foundation/Log.h"

#include <malloc.h>

#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

using nlohmann::ordered_json;

namespace {

std::uint64_t numberIn(std::string_view word) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size())
        throw std::runtime_error("no whole number: " + std::string(word));
    return number;
}

/// Whether all is flat.
bool soak(const std::string& program, std::chrono::seconds duration, std::uint64_t seed) {
    std::cerr << "seed: " << seed << "\n";
    platform::setLogSink({}); // most of what happens here is worth a complaint
    const Media media(program);
    platform::Bundle::application().addFolder(media.folder());
    Soak soak(media, seed);
    soak.run(duration);
    const auto growths = soak.ledger().growths();
    ordered_json report = soak.inJson();
    report["grew"] = growths;
    std::cout << ordered_json{{"soak", report}}.dump(2) << "\n";
    for (const std::string& line : growths)
        std::cerr << "grew, seed " << seed << ": " << line << "\n";
    return growths.empty();
}

} // namespace

/// `zanto-benchmark-soak SECONDS [SEED]` makes everything happen at random for so long, and leaves
/// with 1 when something is held at its end that was not at its beginning. scripts/soak runs it.
int main(int argc, char** argv) {
    // Before any thread: what GLib holds to be a fault of its user ends the run.
    setenv("G_DEBUG", "fatal-criticals", 0); // NOLINT(concurrency-mt-unsafe)
    // One heap for all threads. Of the others the C library gives nothing back that lies at their
    // ends, and which thread gets which is chance: resident memory then rises by
    // megabytes of which nobody holds anything. What leaks shows in one heap just the same.
    mallopt(M_ARENA_MAX, 1);
    try {
        if (argc == 3 && std::string_view(argv[1]) == "--serve")
            serveMedia(argv[2]);
        if (argc != 2 && argc != 3)
            throw std::runtime_error("usage: zanto-benchmark-soak SECONDS [SEED]");
        const std::chrono::seconds duration(numberIn(argv[1]));
        const std::uint64_t seed = argc == 3 ? numberIn(argv[2]) : std::random_device()();
        return soak(argv[0], duration, seed) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << "zanto-benchmark-soak: " << failure.what() << "\n";
        return 1;
    }
}
