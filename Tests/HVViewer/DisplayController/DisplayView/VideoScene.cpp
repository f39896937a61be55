#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"

#include "Platform/Graphics/TextureCache.h"

#include <algorithm>
#include <cstdlib>
#include <random>

VideoScene::VideoScene(platform::Size size) : HeadlessPlayer(size) {
    embedded().appear();
    host().settle();
}

void VideoScene::give(const platform::PixelBufferPtr& frame) {
    view().displayCVPixelBuffer(frame);
    if (view().displayVO() == DisplayMode::SideBySide)
        secondView().displayCVPixelBuffer(frame);
}

std::uint64_t VideoScene::uploadedPlanes() {
    return platform::TextureCache::uploadedPlanes();
}

int distance(const std::array<int, 4>& a, const std::array<int, 4>& b) {
    int farthest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        farthest = std::max(farthest, std::abs(a[i] - b[i]));
    return farthest;
}

std::array<int, 4> middleOf(HeadlessPlayer& player) {
    return colourAt(*player.snapshot(), kClearX, kClearY);
}

platform::PixelBufferPtr noise() {
    std::mt19937 random(5);
    return videoFrame(kFrameSize, [&random](int, int) {
        return YCbCr{static_cast<std::uint8_t>(16 + random() % 220),
                     static_cast<std::uint8_t>(16 + random() % 225),
                     static_cast<std::uint8_t>(16 + random() % 225)};
    });
}
