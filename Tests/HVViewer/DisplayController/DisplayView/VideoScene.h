#pragma once

#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/VideoFrames.h"

#include <array>
#include <cstdint>

/// A player on screen whose views are given frames of a video, as its controller gives them.
class VideoScene : public HeadlessPlayer {
public:
    explicit VideoScene(platform::Size size = {320, 180});

    /// To the main view and, side by side, to the second one too.
    void give(const platform::PixelBufferPtr& frame);
    [[nodiscard]] ZNTDisplayView& secondView() { return *controller().virtualDisplayView(); }
    /// How many planes of frames an action uploads.
    [[nodiscard]] static std::uint64_t uploadsDuring(const auto& action) {
        const std::uint64_t before = uploadedPlanes();
        action();
        return uploadedPlanes() - before;
    }

private:
    [[nodiscard]] static std::uint64_t uploadedPlanes();
};

/// The size of most frames that tests give.
inline constexpr platform::SizePx kFrameSize{64, 32};

inline constexpr std::array kModes{DisplayMode::Plane, DisplayMode::Sphere,
                                   DisplayMode::LittlePlanet, DisplayMode::SideBySide};

/// A place of the start view where no watermark lies, in any mode, in a view of 320 × 180.
inline constexpr int kClearX = 160;
inline constexpr int kClearY = 60;

/// Some colours that the conversion can show, one a luma alone.
inline constexpr YCbCr kGrey{120, 128, 128};
inline constexpr YCbCr kBlack{16, 128, 128};
inline constexpr YCbCr kOrange{130, 90, 190};
inline constexpr YCbCr kBlue{60, 200, 110};

/// How far a pixel is from a colour, in the channel where it is farthest.
[[nodiscard]] int distance(const std::array<int, 4>& a, const std::array<int, 4>& b);

/// What a player of 320 × 180 shows where no watermark lies.
[[nodiscard]] std::array<int, 4> middleOf(HeadlessPlayer& player);

/// A frame with luma and chroma from anywhere in their range.
[[nodiscard]] platform::PixelBufferPtr noise();
