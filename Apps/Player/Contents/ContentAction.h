#pragma once

#include <string>

/// Opens an image or a video, from a file or a URL.
struct ContentAction {
    enum class Kind { Picture, Video };
    Kind kind;
    std::string input;
};
