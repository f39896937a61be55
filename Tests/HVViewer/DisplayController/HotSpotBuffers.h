#pragma once

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"

#include <cstddef>

/// Where `liveGLObjects()` has its buffers.
inline constexpr std::size_t kBuffers = 1;

/// How many of the views have a drawer of hot spots, each of which leaves a buffer of 48 bytes.
[[nodiscard]] inline int hotSpotDrawersOf(const ZNTDisplayViewController& player) {
    int drawers = 0;
    for (const auto& view : {player.displayView(), player.virtualDisplayView()}) {
        if (view && view->glDrawer() && view->glDrawer()->hotSpotGLDrawer())
            ++drawers;
    }
    return drawers;
}
