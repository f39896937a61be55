#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Imaging/Image.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

/// Small videos for tests, made on the spot by `ffmpeg`, and what is to be seen in them.
namespace tests {

/// What each frame shows.
enum class ClipPicture {
    Counter, ///< its own number, from 0, as 16 black or white columns of the full height
    Patches, ///< `kPatches`, four in a row, two rows
};
enum class ClipCodec { H264, H265, VP9, AV1 };
enum class ClipRange { Video, Full };
enum class ClipTimes {
    Even,   ///< frame n at n / framesPerSecond
    Uneven, ///< every other frame half an interval later
};
enum class ClipSound { None, Tone };

/// Fields are chosen by name: `{.frames = 10, .codec = ClipCodec::VP9}`.
struct ClipOptions {
    platform::SizePx size{128, 64};
    int framesPerSecond = 30;
    int frames = 30;
    ClipPicture picture = ClipPicture::Counter;
    ClipCodec codec = ClipCodec::H264;
    /// The ending of the file's name: mp4, mkv, webm, ts.
    std::string container = "mp4";
    /// As `ffmpeg` names it: yuv420p, yuv422p, yuv420p10le.
    std::string pixelFormat = "yuv420p";
    ClipRange range = ClipRange::Video;
    ClipTimes times = ClipTimes::Even;
    ClipSound sound = ClipSound::None;
    /// Frames from one key frame to the next.
    int keyFrameInterval = 12;
    /// More for `ffmpeg`, before the name of the file that it writes.
    std::vector<std::string> more = {};
};

/// The path of such a video. Made once a process, and gone with it.
///
/// Errors: an exception where `ffmpeg` is missing or refuses.
[[nodiscard]] std::string testClip(const ClipOptions& options = {});

/// Runs `ffmpeg` over that video without encoding it again, in a folder of its own, and gives the
/// folder's path: for playlists of segments, which `arguments` asks for by a name without a folder.
[[nodiscard]] std::string remuxedClip(const ClipOptions& options,
                                      const std::vector<std::string>& arguments);

/// When the frame is due, from the start of the video.
[[nodiscard]] platform::Instant frameTime(const ClipOptions& options, int frame);

/// Y, Cb, Cr of the patches in video range, by rows. Lossy codecs keep them within 2.
using YCbCr = std::array<int, 3>;
inline constexpr std::array<YCbCr, 8> kPatches{{{235, 128, 128},
                                                {16, 128, 128},
                                                {81, 90, 240},
                                                {145, 54, 34},
                                                {41, 240, 110},
                                                {126, 128, 128},
                                                {210, 16, 146},
                                                {100, 180, 60}}};

/// What the buffer holds in the middle of a patch.
[[nodiscard]] YCbCr patchIn(const platform::PixelBuffer& buffer, std::size_t index);

/// The frame's number; none where a column is neither black nor white. The whole frame is taken to
/// fill the buffer, or the picture.
[[nodiscard]] std::optional<int> readFrameNumber(const platform::PixelBuffer& buffer);
[[nodiscard]] std::optional<int> readFrameNumber(const platform::Image& picture);

/// Makes such a frame without a decoder.
[[nodiscard]] platform::PixelBufferPtr counterFrame(platform::SizePx size, int number);

} // namespace tests
