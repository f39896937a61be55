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

/// Returns whether nothing has grown.
bool soak(const std::string& program, std::chrono::seconds duration, std::uint64_t seed) {
    std::cerr << "seed: " << seed << "\n";
    platform::setLogSink({}); // most moves cause log lines
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

/// `zanto-benchmark-soak SECONDS [SEED]` makes random moves for that time, and exits with 1 if a
/// resource has grown. scripts/soak runs it.
int main(int argc, char** argv) {
    // Before any thread starts: a GLib critical warning ends the run.
    setenv("G_DEBUG", "fatal-criticals", 0); // NOLINT(concurrency-mt-unsafe)
    // Uses one heap for all threads. The C library does not return memory at the ends of the other
    // heaps, and the assignment of threads to heaps is random, so resident memory would rise by
    // megabytes that nothing uses. A leak shows in a single heap just the same.
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
