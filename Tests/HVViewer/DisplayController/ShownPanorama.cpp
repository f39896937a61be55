#include "Tests/HVViewer/DisplayController/ShownPanorama.h"

#include <algorithm>
#include <chrono>
#include <utility>

using platform::TouchPhase;

void ShownPanorama::flick() {
    using namespace std::chrono_literals;
    touch(TouchPhase::Down, {40, 90});
    for (const double x : {60.0, 80.0, 100.0, 120.0}) {
        advance(20ms);
        touch(TouchPhase::Move, {x, 90});
    }
    touch(TouchPhase::Up, {120, 90});
}

platform::ImagePtr columnsOf(const platform::Image& picture, int left, int widthPx) {
    platform::PixelStorage part(widthPx, picture.heightPx());
    for (int y = 0; y < picture.heightPx(); ++y) {
        const auto start = static_cast<std::size_t>(y * picture.widthPx() + left) * 4;
        const auto row = picture.pixels().subspan(start, static_cast<std::size_t>(widthPx) * 4);
        std::copy(row.begin(), row.end(), part.row(y));
    }
    return std::make_shared<platform::Image>(std::move(part));
}
