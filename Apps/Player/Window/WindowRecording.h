#pragma once

#include "Apps/Player/Scripts/Recorder.h"
#include "Platform/Foundation/Result.h"

#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class SDLHost;

/// A file into which what is done in a window goes, as an action script.
///
/// Owner:  the program; the host that it watches outlives it.
/// Thread: main.
class WindowRecording {
public:
    /// Empties the file. Errors: Unreadable, when it cannot be written.
    [[nodiscard]] static platform::Result<std::unique_ptr<WindowRecording>>
    create(const std::string& path);
    ~WindowRecording();
    WindowRecording(const WindowRecording&) = delete;
    WindowRecording& operator=(const WindowRecording&) = delete;

    using TouchListener = std::function<void(const platform::TouchEvent&)>;

    /// The window's view appears: records its size, and from now on its touches and other sizes. A
    /// window has one listener for touches, so they are handed on to `next`.
    void begin(SDLHost& host, TouchListener next = {});
    /// What the program does beside them.
    void note(const decltype(Action::what)& what) { recorder_->note(what); }
    /// Writes what is left; nothing is recorded any more.
    ///
    /// Errors: Unreadable, when not everything could be written.
    [[nodiscard]] std::optional<platform::Error> end();

    /// What the command line that plays it back says beside the content: a script knows neither
    /// pixels per point nor how far touches wander.
    [[nodiscard]] std::string playbackOptions(const platform::TouchSlop& slop) const;

private:
    WindowRecording(std::string path, std::ofstream file);

    std::string path_;
    std::ofstream file_;
    std::optional<Recorder> recorder_;
    SDLHost* host_ = nullptr; // watched, from begin() to end()
    platform::Size size_;
    double scale_ = 1;
};
