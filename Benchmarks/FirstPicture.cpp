#include "Benchmarks/FirstPicture.h"

#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Graphics/OffscreenTarget.h"

#include <GLES2/gl2.h>
#include <turbojpeg.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr platform::SizePx kSize{1280, 720};
constexpr int kRuns = 7;

double millisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

std::unique_ptr<zanto::HeadlessHost> makeHost() {
    auto host = zanto::HeadlessHost::create(
        {{kSize.width, kSize.height}, 1, zanto::HeadlessHostOptions::Time::Real});
    if (!host)
        throw std::runtime_error(host.error().detail);
    return std::move(host).value();
}

/// Draws until the first frame with the image is finished.
double showMilliseconds(const std::string& path) {
    const auto host = makeHost();
    const auto target = std::move(platform::OffscreenTarget::create(kSize)).value();
    const auto start = std::chrono::steady_clock::now();
    const auto player = platform::make<ZNTDisplayViewController>();
    player->prepareImageWithUrl(platform::URL::fileURLWithPath(path));
    host->embedded().setRootViewController(player);
    host->embedded().appear();
    // This iteration uploads the image; the watermark follows in a later one.
    host->embedded().runDueWork();
    host->embedded().draw(target->framebuffer(), {0, 0, kSize.width, kSize.height});
    glFinish();
    return millisecondsSince(start);
}

/// The baseline: the file, decoded whole into fresh memory, and one texture upload.
double bareMilliseconds(const std::string& path) {
    const auto host = makeHost();
    const auto start = std::chrono::steady_clock::now();
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> encoded((std::istreambuf_iterator<char>(file)), {});
    const auto* bytes = reinterpret_cast<const unsigned char*>(encoded.data());
    tjhandle decoder = tjInitDecompress();
    int width = 0;
    int height = 0;
    int subsampling = 0;
    int colours = 0;
    tjDecompressHeader3(decoder, bytes, encoded.size(), &width, &height, &subsampling, &colours);
    const std::unique_ptr<unsigned char[]> pixels(
        new unsigned char[static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4]);
    tjDecompress2(decoder, bytes, encoded.size(), pixels.get(), width, 0, height, TJPF_RGBA, 0);
    tjDestroy(decoder);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 pixels.get());
    glFinish();
    const double milliseconds = millisecondsSince(start);
    glDeleteTextures(1, &texture);
    return milliseconds;
}

/// A line of /proc/self/status, in bytes.
double statusBytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string key; status >> key;) {
        double kilobytes = 0;
        if (key == name + ":" && status >> kilobytes)
            return kilobytes * 1024;
    }
    throw std::runtime_error("no " + name + " in /proc/self/status");
}

} // namespace

nlohmann::ordered_json measureFirstPicture(const std::string& path) {
    std::vector<double> shown;
    std::vector<double> bare;
    for (int i = 0; i < kRuns; ++i) {
        bare.push_back(bareMilliseconds(path));
        shown.push_back(showMilliseconds(path));
    }
    return {{"first_picture_ms", median(shown)},
            {"bare_decode_and_upload_ms", median(bare)},
            {"ratio", median(shown) / median(bare)},
            {"fastest_ms", *std::min_element(shown.begin(), shown.end())},
            {"fastest_bare_ms", *std::min_element(bare.begin(), bare.end())}};
}

nlohmann::ordered_json measureResidentMemory(const std::string& path) {
    const auto host = makeHost();
    const auto player = platform::make<ZNTDisplayViewController>();
    player->prepareImageWithUrl(platform::URL::fileURLWithPath(path));
    host->embedded().setRootViewController(player);
    host->embedded().appear();
    host->settle();
    glFinish();
    return {{"peak_bytes", statusBytes("VmHWM")}, {"settled_bytes", statusBytes("VmRSS")}};
}
