#include "Benchmarks/FirstPicture.h"
#include "Benchmarks/FrameBenchmark.h"
#include "Benchmarks/HotSpotBenchmark.h"
#include "Benchmarks/Panoramas.h"
#include "Benchmarks/VideoFrameBenchmark.h"
#include "Benchmarks/VideoLatency.h"
#include "Benchmarks/VideoPlayback.h"
#include "Benchmarks/VideoSoak.h"
#include "Platform/Foundation/Log.h"

#include <turbojpeg.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

using nlohmann::ordered_json;

namespace {

void writeJpeg(const std::string& path, int widthPx) {
    const platform::PixelStorage pixels = makePanorama(widthPx);
    tjhandle encoder = tjInitCompress();
    unsigned char* encoded = nullptr;
    unsigned long size = 0;
    tjCompress2(encoder, pixels.bytes.get(), pixels.widthPx, 0, pixels.heightPx, TJPF_RGBA,
                &encoded, &size, TJSAMP_420, 90, 0);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(encoded), static_cast<std::streamsize>(size));
    tjFree(encoded);
    tjDestroy(encoder);
}

/// The output of a command, parsed as JSON. A measurement of peak memory needs its own process.
ordered_json outputOf(const std::string& command) {
    // The commands are this program's own path and options. NOLINTNEXTLINE(cert-env33-c)
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    if (!pipe)
        throw std::runtime_error(command + " did not start");
    std::string text;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe.get()))
        text.append(buffer.data(), count);
    return ordered_json::parse(text);
}

ordered_json compareMemory(const std::string& self, const std::string& large,
                           const std::string& tiny) {
    constexpr double texels = 128.0 * 1024 * 1024;
    const ordered_json big = outputOf(self + " --memory " + large);
    const ordered_json small = outputOf(self + " --memory " + tiny);
    const auto over = [&](const char* key) {
        return (big[key].get<double>() - small[key].get<double>()) / texels;
    };
    return {{"texel_bytes", texels},
            {"picture", big},
            {"picture_of_2x1", small},
            {"peak_ratio", over("peak_bytes")},
            {"settled_ratio", over("settled_bytes")}};
}

ordered_json measureAllFrames() {
    return {measureFrames({1280, 720}), measureFrames({1920, 1080})};
}

ordered_json measureAll(const std::string& self, const std::string& idleWindow) {
    const auto folder = std::filesystem::temp_directory_path();
    const std::string large = (folder / "zanto-benchmark-8192.jpg").string();
    const std::string tiny = (folder / "zanto-benchmark-2.jpg").string();
    writeJpeg(large, 8192);
    writeJpeg(tiny, 2);
    ordered_json report{{"jpeg_8192x4096_bytes", std::filesystem::file_size(large)}};
    report["frames"] = measureAllFrames();
    report["video_frames"] = measureVideoFrames();
    report["hot_spots"] = measureHotSpots();
    report["first_picture"] = measureFirstPicture(large);
    report["memory"] = compareMemory(self, large, tiny);
    if (!idleWindow.empty())
        report["idle_window"] = outputOf(idleWindow);
    std::filesystem::remove(large);
    std::filesystem::remove(tiny);
    return report;
}

/// The number after the option, or `otherwise` if there is none.
int numberAt(int argc, char** argv, int otherwise) {
    if (argc <= 2)
        return otherwise;
    const std::string_view word = argv[2];
    int number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size() || number <= 0)
        throw std::runtime_error("no number above 0: " + std::string(word));
    return number;
}

/// Measures what the arguments ask for.
ordered_json measure(int argc, char** argv) {
    const std::string first = argc > 1 ? argv[1] : "";
    if (first == "--memory" && argc > 2)
        return measureResidentMemory(argv[2]);
    if (first == "--frames")
        return {{"frames", measureAllFrames()}};
    if (first == "--video-frames")
        return {{"video_frames", measureVideoFrames()}};
    if (first == "--hot-spots")
        return {{"hot_spots", measureHotSpots()}};
    if (first == "--video-playback")
        return {{"video_playback", measureVideoPlayback(numberAt(argc, argv, 10))}};
    if (first == "--video-latency")
        return {{"video_latency", measureVideoLatency()}};
    if (first == "--video-soak")
        return {{"video_soak", measureVideoSoak(numberAt(argc, argv, 10))}};
    return measureAll(argv[0], first);
}

} // namespace

/// `zanto-benchmark [IDLE-WINDOW-PROGRAM]` prints all measurements as one JSON object,
/// `zanto-benchmark --frames`, `--video-frames` and `--hot-spots` only a part of them. Only on
/// request: `--video-playback [SECONDS]`, `--video-latency`, `--video-soak [MINUTES]`.
int main(int argc, char** argv) {
    try {
        const ordered_json report = measure(argc, argv);
        std::cout << report.dump(2) << "\n";
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "zanto-benchmark: " << failure.what() << "\n";
        return 1;
    }
}
