#include "Benchmarks/Soak/Media.h"

#include "Tests/Support/HttpServer.h"
#include "Tests/Support/PictureFiles.h"
#include "Tests/Support/TestClips.h"

#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iostream>
#include <stdexcept>

using namespace std::chrono_literals;
using tests::Alpha;
using tests::Bytes;
using tests::noise;

namespace {

Bytes firstPart(const Bytes& file, std::size_t divisor) {
    return {file.begin(), file.begin() + static_cast<std::ptrdiff_t>(file.size() / divisor)};
}

void copyClip(const tests::ClipOptions& clip, const std::string& path) {
    std::filesystem::copy_file(tests::testClip(clip), path);
}

} // namespace

Media::Media(const std::string& program) : server_({program, "--serve", folder_.path()}) {
    const auto line = server_.readLine(10s);
    if (!line)
        throw std::runtime_error("the server has not started");
    address_ = *line;
    addPictures();
    addVideos();
    addIcons();
}

void Media::addPictures() {
    const auto add = [this](const std::string& name, const Bytes& file) {
        folder_.add(name, file);
        pictures.push_back(name);
    };
    const Bytes jpeg = tests::jpegFile(noise(1024, 512, 1, Alpha::Opaque));
    const Bytes png = tests::pngFile(noise(300, 150, 2, Alpha::Random));
    add("baseline.jpg", jpeg);
    add("progressive.jpg", tests::jpegFile(noise(640, 320, 3, Alpha::Opaque),
                                           {.coding = tests::JPEGCoding::Progressive, .exif = {}}));
    add("turned.jpg",
        tests::jpegFile(noise(128, 256, 4, Alpha::Opaque), {.exif = tests::exifBlock(6)}));
    add("large.jpg", tests::jpegFile(tests::quadrants(4096, 2048)));
    add("alpha.png", png);
    add("interlaced.png",
        tests::pngVariant(257, 129, {.colourType = 3, .isInterlaced = true, .exif = {}}).file);
    add("too-wide.png", tests::flatGreyPNG(20000, 16, 90));
    add("lossy.webp", tests::webpFile(noise(512, 256, 5, Alpha::Opaque),
                                      {.coding = tests::WebPCoding::Lossy, .exif = {}}));
    add("lossless.webp", tests::webpFile(noise(200, 100, 6, Alpha::Random)));
    folder_.add("cut.jpg", firstPart(jpeg, 2));
    folder_.add("cut.png", firstPart(png, 3));
    folder_.add("empty.jpg", {});
    const std::string text = "no picture at all\n";
    folder_.add("text.png", Bytes(text.begin(), text.end()));
    brokenPictures = {"cut.jpg", "cut.png", "empty.jpg", "text.png", "missing.jpg"};
}

void Media::addVideos() {
    using enum tests::ClipCodec;
    const auto add = [this](const std::string& name, const tests::ClipOptions& clip) {
        copyClip(clip, pathOf(name));
        videos.push_back(name);
    };
    add("short.mp4", {.frames = 20, .more = {"-movflags", "+faststart"}});
    add("wide.mp4", {.size = {640, 320}, .frames = 60});
    add("sound.mkv", {.frames = 45, .container = "mkv", .sound = tests::ClipSound::Tone});
    add("vp9.webm", {.codec = VP9, .container = "webm"});
    add("uneven.mp4", {.framesPerSecond = 25, .times = tests::ClipTimes::Uneven});
    copyClip({.size = {640, 320}, .frames = 60}, pathOf("cut.mp4"));
    std::filesystem::resize_file(pathOf("cut.mp4"),
                                 std::filesystem::file_size(pathOf("cut.mp4")) / 2);
    const std::string text = "no video at all\n";
    folder_.add("text.mp4", Bytes(text.begin(), text.end()));
    folder_.add("empty.mp4", {});
    brokenVideos = {"cut.mp4", "text.mp4", "empty.mp4", "baseline.jpg", "missing.mp4"};
}

void Media::addIcons() {
    const std::string text = "no icon at all\n";
    folder_.add("icon.png", tests::pngFile(noise(64, 64, 7, Alpha::Random)));
    folder_.add("icon@2x.png", tests::pngFile(noise(128, 128, 8, Alpha::Random)));
    folder_.add("flat.webp", tests::webpFile(noise(30, 90, 9, Alpha::Opaque)));
    folder_.add("broken.png", Bytes(text.begin(), text.end()));
    icons = {"icon.png", "flat.webp"};
    brokenIcons = {"broken.png", "nowhere.png", ""};
}

std::string Media::urlOf(const std::string& name, Delivery delivery) const {
    switch (delivery) {
    case Delivery::Slow:
        return address_ + "slow/" + name;
    case Delivery::Cut:
        return address_ + "cut/" + name;
    case Delivery::Quick:
        break;
    }
    return address_ + "quick/" + name;
}

void serveMedia(const std::string& folder) {
    // Closing each connection keeps the client from caching it, so that the number of open
    // connections does not depend on which download was the last.
    const tests::HttpReply once{.headers = {{"Connection", "close"}}};
    tests::HttpReply slow = once;
    slow.dripBytes = 4096;
    slow.dripPause = 2ms;
    tests::HttpReply cut = once;
    cut.cutAfter = 700;
    tests::HttpServer server;
    server.serveFolder("/quick/", folder, once);
    server.serveFolder("/slow/", folder, slow);
    server.serveFolder("/cut/", folder, cut);
    // The parent process waits for this line. NOLINTNEXTLINE(performance-avoid-endl)
    std::cout << server.url("/") << std::endl;
    for (;;)
        pause();
}
