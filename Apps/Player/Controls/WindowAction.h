#pragma once

/// The actions of the window's keys and controls.
enum class WindowAction {
    ShowPlane,
    ShowSphere,
    ShowLittlePlanet,
    ShowSideBySide,
    ToggleDeviceMotion,
    ToggleVerticalLock,
    ToggleAutoPicking,
    LookLeft,
    LookRight,
    LookUp,
    LookDown,
    TogglePlayback,
    SeekBack,
    SeekForward,
    ToggleMute,
    VolumeDown,
    VolumeUp,
    ToggleFullScreen,
    TakeScreenshot,
    ToggleHelp,
    Quit,
    Leave, ///< closes the help if it is shown, else leaves full screen if it is on, else quits
};
