#pragma once

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
/// The way the device is turned: from then on there is a sensor, though nobody need follow it.
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
/// A marker, as `ZNTHotSpot` has it.
struct HotSpot {
    std::string name;
    /// A file.
    std::string image;
    float vertical = 0;
    float horizontal = 0;
    float scale = 1;
    float x = 1;
    float y = 1;
};
/// These hot spots and no others.
struct HotSpotsAction {
    std::vector<HotSpot> hotSpots;
    /// Fractions of the screen.
    platform::Point pickingPoint{0.5, 0.5};
    std::int64_t rejectRate = 1;
};
/// A picture or a video, from a file or an address.
struct ContentAction {
    enum class Kind { Picture, Video };
    Kind kind;
    std::string input;
};
struct SeekAction {
    double seconds;
};
struct VolumeAction {
    /// 0 to 1.
    double volume;
};
/// What is done without saying more.
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
    /// Its time is filled in when it is played.
    platform::TouchEvent event;
};
struct SnapshotAction {
    /// Inside the output folder.
    std::string name;
};

/// One thing that an action script does at one time; a line that stands for a gesture is several.
struct Action {
    /// Virtual seconds.
    double at = 0;
    std::variant<ModeAction, ResizeAction, OrientationAction, AttitudeAction, SwitchAction,
                 SphericalOffsetAction, HotSpotsAction, TouchAction, ContentAction, SeekAction,
                 VolumeAction, CommandAction, SnapshotAction>
        what;

    /// Settings at second 0 take effect before the view appears.
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
