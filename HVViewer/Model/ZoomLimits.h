#pragma once

#include "HVViewer/Model/DisplayMode.h"

/// The zoom limits of a display mode: where the zoom rests (`min`, `max`), and how far fingers can
/// pull it (`minAnim`, `maxAnim`).
struct ZoomLimits {
    double min, max, minAnim, maxAnim;
};

constexpr ZoomLimits zoomLimitsOf(DisplayMode mode) {
    switch (mode) {
    case DisplayMode::Sphere:
        return {0.7F, 1.9F, 0.5, 2.9F};
    case DisplayMode::LittlePlanet:
        return {0.8F, 0.85F, 0.7F, 2.9F};
    case DisplayMode::Plane:
    case DisplayMode::SideBySide:
        break;
    }
    return {1.0, 3.0, 0.8, 4.5};
}
