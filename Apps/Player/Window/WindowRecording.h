#pragma once

#include "Apps/Player/Scripts/Recorder.h"
#include "Platform/Foundation/Result.h"

#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zanto {
class SDLHost;
} // namespace zanto

/// Records the actions in a window to a file, as an action script.
///
/// Owner:  the program; the host must outlive it.
/// Thread: main.
class WindowRecording {
public:
    /// Creates or empties the file. Errors: Unreadable if it cannot be written.
    [[nodiscard]] static platform::Result<std::unique_ptr<WindowRecording>>
    create(const std::string& path);
    ~WindowRecording();
    WindowRecording(const WindowRecording&) = delete;
    WindowRecording& operator=(const WindowRecording&) = delete;

    using TouchListener = std::function<void(const platform::TouchEvent&)>;

    /// Called when the window's view appears: records its size, and from now on touches and size
    /// changes. A window has only one touch listener, so touches are forwarded to `next`.
    void begin(zanto::SDLHost& host, TouchListener next = {});
    /// Records any other action of the program.
    void note(const decltype(Action::what)& what) { recorder_->note(what); }
    /// Finishes the recording.
    ///
    /// Errors: Unreadable if the file could not be written completely.
    [[nodiscard]] std::optional<platform::Error> end();

    /// The options of the command line that plays the recording back. They are needed because a
    /// script contains neither the pixels per point nor the touch slop.
    [[nodiscard]] std::string playbackOptions(const platform::TouchSlop& slop) const;

private:
    WindowRecording(std::string path, std::ofstream file);

    std::string path_;
    std::ofstream file_;
    std::optional<Recorder> recorder_;
    zanto::SDLHost* host_ = nullptr; // observed from begin() to end()
    platform::Size size_;
    double scale_ = 1;
};
