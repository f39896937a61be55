#pragma once

#include <string>

/// A picture or a video, from a file or an address.
struct ContentAction {
    enum class Kind { Picture, Video };
    Kind kind;
    std::string input;
};
