#pragma once

#include "HVViewer/Model/DisplayMode.h"

#include <optional>
#include <string>

/// What the controls have to tell at one moment.
struct ControlsState {
    struct Video {
        bool isPlaying = false;
        double seconds = 0;
        /// None: not known, or a live stream.
        std::optional<double> duration = {};
        /// 0 to 1.
        double volume = 0;
    };
    struct Loading {
        std::string text;
        /// 0 to 1; none: nobody knows.
        std::optional<double> fraction = {};
    };

    DisplayMode mode = DisplayMode::Sphere;
    /// None: a still picture, or nothing yet.
    std::optional<Video> video = {};
    bool followsDevice = false;
    bool isFullScreen = false;
    bool showsHelp = false;
    std::optional<Loading> loading = {};
    /// What went wrong, in words; empty: nothing.
    std::string message = {};
};
