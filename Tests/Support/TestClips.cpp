#include "Tests/Support/TestClips.h"

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <utility>

namespace tests {
namespace {

using Words = std::vector<std::string>;

constexpr int kColumns = 16;
constexpr std::uint8_t kBlack = 16;
constexpr std::uint8_t kWhite = 235;
constexpr std::uint8_t kNoColour = 128;

/// Three planes of one frame; 4:2:0, rows without padding.
struct Planes {
    explicit Planes(platform::SizePx size)
        : luma(size), chroma{(size.width + 1) / 2, (size.height + 1) / 2},
          samples{std::vector<std::uint8_t>(count(luma), kBlack),
                  std::vector<std::uint8_t>(count(chroma), kNoColour),
                  std::vector<std::uint8_t>(count(chroma), kNoColour)} {}

    [[nodiscard]] static std::size_t count(platform::SizePx size) {
        return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    }
    [[nodiscard]] platform::SizePx size(std::size_t plane) const {
        return plane == 0 ? luma : chroma;
    }

    platform::SizePx luma;
    platform::SizePx chroma;
    std::array<std::vector<std::uint8_t>, 3> samples;
};

bool isWhite(int number, int column) {
    return ((number >> (kColumns - 1 - column)) & 1) != 0;
}

Planes counterPlanes(platform::SizePx size, int number) {
    Planes planes(size);
    for (std::size_t i = 0; i < planes.samples[0].size(); ++i) {
        const auto x = static_cast<int>(i % static_cast<std::size_t>(size.width));
        planes.samples[0][i] = isWhite(number, x * kColumns / size.width) ? kWhite : kBlack;
    }
    return planes;
}

Planes patchPlanes(platform::SizePx size) {
    Planes planes(size);
    for (std::size_t plane = 0; plane < planes.samples.size(); ++plane) {
        const auto [width, height] = planes.size(plane);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const auto patch = static_cast<std::size_t>(y * 2 / height * 4 + x * 4 / width);
                planes.samples[plane][static_cast<std::size_t>(y * width + x)] =
                    static_cast<std::uint8_t>(kPatches[patch][plane]);
            }
        }
    }
    return planes;
}

void writeFrames(const ClipOptions& options, const std::string& path) {
    std::ofstream file(path, std::ios::binary);
    for (int frame = 0; frame < options.frames; ++frame) {
        const Planes planes = options.picture == ClipPicture::Counter
                                  ? counterPlanes(options.size, frame)
                                  : patchPlanes(options.size);
        for (const auto& plane : planes.samples)
            file.write(reinterpret_cast<const char*>(plane.data()),
                       static_cast<std::streamsize>(plane.size()));
    }
    if (!file.flush())
        throw std::runtime_error("cannot write " + path);
}

void append(Words& words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
}

Words encoder(ClipCodec codec) {
    switch (codec) {
    case ClipCodec::H264:
        return {"-c:v", "libx264", "-preset", "ultrafast", "-crf", "6"};
    case ClipCodec::H265:
        return {"-c:v",   "libx265", "-preset",      "ultrafast",
                "-crf",   "6",       "-x265-params", "log-level=none:pools=1",
                "-tag:v", "hvc1"};
    case ClipCodec::VP9:
        return {"-c:v", "libvpx-vp9", "-deadline", "realtime", "-cpu-used",
                "8",    "-crf",       "10",        "-b:v",     "0"};
    case ClipCodec::AV1:
        return {"-c:v", "libaom-av1", "-usage", "realtime", "-cpu-used", "8", "-crf", "10"};
    }
    throw std::logic_error("no such codec");
}

Words input(const ClipOptions& options, const std::string& raw) {
    const auto& [width, height] = options.size;
    Words words{"ffmpeg", "-nostdin", "-loglevel", "error",  "-y",
                "-f",     "rawvideo", "-pix_fmt",  "yuv420p"};
    append(words, {"-s", std::to_string(width) + "x" + std::to_string(height), "-r",
                   std::to_string(options.framesPerSecond), "-i", raw});
    if (options.sound == ClipSound::Tone)
        append(words,
               {"-f", "lavfi", "-i",
                "sine=frequency=440:sample_rate=44100:duration=" +
                    std::to_string(static_cast<double>(options.frames) / options.framesPerSecond)});
    return words;
}

/// Times are spread in ticks of which every frame rate of tests has a whole number an interval.
constexpr const char* kTicks = "90000";

Words filters(const ClipOptions& options) {
    // Said of both ends, else the filter converts the colours of what it takes for a picture file.
    std::string chain = "scale=in_range=tv:out_range=";
    chain += options.range == ClipRange::Full ? "pc" : "tv";
    if (options.times == ClipTimes::Uneven)
        chain += std::string(",settb=1/") + kTicks + ",setpts='(N+mod(N,2)/2)*" + kTicks + "/" +
                 std::to_string(options.framesPerSecond) + "'";
    Words words{"-vf",          chain,
                "-pix_fmt",     options.pixelFormat,
                "-color_range", options.range == ClipRange::Full ? "pc" : "tv"};
    if (options.times == ClipTimes::Uneven)
        append(words, {"-fps_mode", "passthrough", "-enc_time_base", std::string("1/") + kTicks});
    if (options.container == "mp4")
        append(words, {"-video_track_timescale", kTicks});
    return words;
}

Words command(const ClipOptions& options, const std::string& raw, const std::string& path) {
    Words words = input(options, raw);
    append(words, filters(options));
    append(words, encoder(options.codec));
    append(words, {"-g", std::to_string(options.keyFrameInterval), "-threads", "1"});
    if (options.sound == ClipSound::Tone)
        append(words, {"-c:a", options.container == "webm" ? "libopus" : "aac", "-b:a", "64k"});
    append(words, options.more);
    words.push_back(path);
    return words;
}

/// The process's clips, by the command that made them.
struct ClipFolder {
    TemporaryFolder folder;
    std::map<Words, std::string> paths;
};

ClipFolder& clips() {
    static ClipFolder instance;
    return instance;
}

/// The path under that key, made on first use.
std::string once(const Words& key, const std::string& name,
                 const std::function<Words(const std::string& path)>& commandFor) {
    auto& [folder, paths] = clips();
    if (const auto known = paths.find(key); known != paths.end())
        return known->second;
    const std::string path = folder.pathOf(std::to_string(paths.size()) + name);
    if (ChildProcess(commandFor(path)).exitCode() != 0)
        throw std::runtime_error("ffmpeg made no " + path);
    return paths[key] = path;
}

std::optional<int> numberOf(const std::function<int(int column)>& lightness) {
    int number = 0;
    for (int column = 0; column < kColumns; ++column) {
        const int value = lightness(column);
        if (value >= 80 && value <= 170)
            return std::nullopt;
        number = 2 * number + (value > 170 ? 1 : 0);
    }
    return number;
}

int middleOfColumn(int column, int width) {
    return (2 * column + 1) * width / (2 * kColumns);
}

} // namespace

std::string testClip(const ClipOptions& options) {
    const std::string raw = clips().folder.pathOf("frames.yuv");
    const auto with = [&](const std::string& path) {
        writeFrames(options, raw);
        return command(options, raw, path);
    };
    Words key = command(options, std::to_string(options.frames),
                        options.picture == ClipPicture::Counter ? "counter" : "patches");
    key.push_back(options.container);
    std::string path = once(key, "." + options.container, with);
    std::error_code ignored; // it is there only if this call has made the clip
    std::filesystem::remove(raw, ignored);
    return path;
}

std::string remuxedClip(const ClipOptions& options, const Words& arguments) {
    const std::string source = testClip(options);
    Words key{source};
    append(key, arguments);
    return once(key, "", [&](const std::string& path) {
        std::filesystem::create_directory(path);
        Words words{"env",       "--chdir=" + path,
                    "ffmpeg",    "-nostdin",
                    "-loglevel", "error",
                    "-i",        source,
                    "-c",        "copy"};
        append(words, arguments);
        return words;
    });
}

platform::Instant frameTime(const ClipOptions& options, int frame) {
    const bool late = options.times == ClipTimes::Uneven && frame % 2 != 0;
    return platform::fromSeconds((frame + (late ? 0.5 : 0.0)) / options.framesPerSecond);
}

YCbCr patchIn(const platform::PixelBuffer& buffer, std::size_t index) {
    const auto [width, height] = buffer.size();
    const auto column = static_cast<int>(index % 4);
    const auto row = static_cast<int>(index / 4);
    const int x = (2 * column + 1) * width / 8;
    const int y = (2 * row + 1) * height / 4;
    const auto& [luma, lumaStride] = buffer.plane(0);
    const auto& [chroma, chromaStride] = buffer.plane(1);
    const std::uint8_t* pair = chroma + std::ptrdiff_t{y / 2} * chromaStride + x / 2 * 2;
    return {luma[std::ptrdiff_t{y} * lumaStride + x], pair[0], pair[1]};
}

std::optional<int> readFrameNumber(const platform::PixelBuffer& buffer) {
    const auto [width, height] = buffer.size();
    const auto& [luma, stride] = buffer.plane(0);
    const std::uint8_t* row = luma + std::ptrdiff_t{height / 2} * stride;
    return numberOf(
        [row, width = width](int column) { return int{row[middleOfColumn(column, width)]}; });
}

std::optional<int> readFrameNumber(const platform::Image& picture) {
    const int width = picture.widthPx();
    const auto row = picture.pixels().subspan(std::size_t{4} * static_cast<std::size_t>(width) *
                                              static_cast<std::size_t>(picture.heightPx() / 2));
    return numberOf([&](int column) {
        const auto green = static_cast<std::size_t>(middleOfColumn(column, width)) * 4 + 1;
        return int{row[green]};
    });
}

platform::PixelBufferPtr counterFrame(platform::SizePx size, int number) {
    const Planes planes = counterPlanes(size, number);
    auto bytes = std::make_shared<std::vector<std::uint8_t>>(planes.samples[0]);
    const std::size_t chromaBytes = 2 * Planes::count(planes.chroma);
    bytes->resize(bytes->size() + chromaBytes, kNoColour);
    const std::uint8_t* luma = bytes->data();
    const std::uint8_t* chroma = luma + planes.samples[0].size();
    return platform::PixelBuffer::wrap(size, {luma, size.width}, {chroma, 2 * planes.chroma.width},
                                       std::move(bytes));
}

} // namespace tests
