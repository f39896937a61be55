#pragma once

#include "HVViewer/Model/DisplayMode.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Application.h"

#include <string>
#include <variant>

struct ModeAction {
    DisplayMode mode;
};
struct ResizeAction {
    platform::Size size;
};
struct OrientationAction {
    platform::InterfaceOrientation orientation;
};
struct TransparentAction {
    bool on;
};
struct SnapshotAction {
    /// Inside the output folder.
    std::string name;
};

/// One line of an action script.
struct Action {
    /// Virtual seconds.
    double at = 0;
    std::variant<ModeAction, ResizeAction, OrientationAction, TransparentAction, SnapshotAction>
        what;

    /// Settings at second 0 take effect before the view appears.
    [[nodiscard]] bool isSetting() const { return !std::holds_alternative<SnapshotAction>(what); }
};
