#pragma once

#include "Apps/Player/Contents/ContentAction.h"
#include "Apps/Player/Contents/HotSpotsAction.h"
#include "HVViewer/Model/DisplayMode.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Application.h"
#include "Platform/Interface/Touch.h"
#include "Platform/Motion/AttitudeSource.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

struct ModeAction {
    DisplayMode mode;
};
struct ResizeAction {
    platform::Size size;
};
struct OrientationAction {
    platform::InterfaceOrientation orientation;
};
/// The device's attitude. From then on there is an attitude source, even if nothing uses it.
struct AttitudeAction {
    platform::Attitude attitude;
};
struct SwitchAction {
    enum class Switch {
        DeviceMotion,
        TouchMotion,
        PinchZoom,
        LockVertical,
        Transparent,
        AutoPicking,
        TapDetection,
    };
    Switch which;
    bool on;
};
struct SeekAction {
    double seconds;
};
struct VolumeAction {
    /// From 0 to 1.
    double volume;
};
/// The actions without parameters.
enum class CommandAction {
    Play,
    Pause,
    Appear, ///< the view disappears and appears again
    Reload,
};
struct SphericalOffsetAction {
    float radians;
};
struct TouchAction {
    /// Its time is filled in when the action is performed.
    platform::TouchEvent event;
};
struct SnapshotAction {
    /// A path inside the output folder.
    std::string name;
};

/// One action of a script at one time. A line that describes a gesture yields several actions.
struct Action {
    /// In virtual seconds.
    double at = 0;
    std::variant<ModeAction, ResizeAction, OrientationAction, AttitudeAction, SwitchAction,
                 SphericalOffsetAction, HotSpotsAction, TouchAction, ContentAction, SeekAction,
                 VolumeAction, CommandAction, SnapshotAction>
        what;

    /// Settings at second 0 are applied before the view appears.
    [[nodiscard]] bool isSetting() const {
        return isAnyOf<ModeAction, ResizeAction, OrientationAction, AttitudeAction, SwitchAction,
                       SphericalOffsetAction, HotSpotsAction>();
    }
    [[nodiscard]] bool isSnapshot() const { return isAnyOf<SnapshotAction>(); }

private:
    template <class... Kinds>
    [[nodiscard]] bool isAnyOf() const {
        return (std::holds_alternative<Kinds>(what) || ...);
    }
};
