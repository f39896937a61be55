#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"

#include "Platform/Foundation/Screen.h"
#include "Platform/Interface/Application.h"

#include <algorithm>

namespace {

/// The size of the screen by its reported orientation, which may differ from its actual shape.
platform::Size screenAsHeld() {
    const platform::Size size = platform::Screen::mainScreen().bounds().size;
    const auto [shorter, longer] = std::minmax(size.width, size.height);
    const auto orientation = platform::Application::sharedApplication().statusBarOrientation();
    return platform::isLandscape(orientation) ? platform::Size{longer, shorter}
                                              : platform::Size{shorter, longer};
}

} // namespace

std::shared_ptr<ZNTHotSpotPickingPoint>
ZNTHotSpotPickingPoint::pickingPointForXPosition(double x, double yPosition) {
    return platform::make<ZNTHotSpotPickingPoint>(x, yPosition);
}

double ZNTHotSpotPickingPoint::xPosition() const {
    const double position = screenAsHeld().width * hKoef_;
    return sbsModeActive_ ? position / 2 : position;
}

double ZNTHotSpotPickingPoint::yPosition() const {
    return screenAsHeld().height * vKoef_;
}
