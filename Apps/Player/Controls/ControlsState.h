#pragma once

#include "HVViewer/Model/DisplayMode.h"

#include <optional>
#include <string>

/// What the controls show at one moment.
struct ControlsState {
    struct Video {
        bool isPlaying = false;
        double seconds = 0;
        /// nullopt if unknown, or for a live stream.
        std::optional<double> duration = {};
        /// From 0 to 1.
        double volume = 0;
    };
    struct Loading {
        std::string text;
        /// From 0 to 1; nullopt if unknown.
        std::optional<double> fraction = {};
    };

    DisplayMode mode = DisplayMode::Sphere;
    /// nullopt for a still image, or if nothing is open.
    std::optional<Video> video = {};
    bool followsDevice = false;
    bool isFullScreen = false;
    bool showsHelp = false;
    std::optional<Loading> loading = {};
    /// An error message; empty if there is none.
    std::string message = {};
};
