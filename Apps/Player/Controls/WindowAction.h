#pragma once

/// What a key or a control of the window does.
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
    Leave, ///< the help if it is there, else full screen if it is on, else the program
};
