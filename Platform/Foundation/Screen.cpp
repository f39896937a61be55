#include "Platform/Foundation/Screen.h"

#include "Platform/Foundation/Environment.h"

#include <algorithm>
#include <cmath>

namespace platform {

Screen& Screen::mainScreen() {
    return Environment::current().part<Screen>();
}

Rect Screen::nativeBounds() const {
    const double width = std::round(size_.width * scale_);
    const double height = std::round(size_.height * scale_);
    return {{}, {std::min(width, height), std::max(width, height)}};
}

void Screen::setSize(Size points, double scale) {
    size_ = points;
    scale_ = scale;
}

} // namespace platform
