#include "Apps/Player/Window/WindowRecording.h"

#include "Hosts/SDL/SDLHost.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/Screen.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

using platform::Error;
using platform::ErrorCode;

namespace {

/// The shortest text that parses to the same number.
std::string textOf(double number) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

Error cannotBeWritten(const std::string& path) {
    return {ErrorCode::Unreadable, path + ": cannot be written"};
}

} // namespace

platform::Result<std::unique_ptr<WindowRecording>>
WindowRecording::create(const std::string& path) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file)
        return cannotBeWritten(path);
    return std::unique_ptr<WindowRecording>(new WindowRecording(path, std::move(file)));
}

WindowRecording::WindowRecording(std::string path, std::ofstream file)
    : path_(std::move(path)), file_(std::move(file)) {
    recorder_.emplace(file_, [] { return platform::MainQueue::main().now(); });
}

WindowRecording::~WindowRecording() {
    (void)end(); // callers that need the error have called `end`
}

void WindowRecording::begin(zanto::SDLHost& host, TouchListener next) {
    const platform::Screen& screen = platform::Screen::mainScreen();
    size_ = screen.bounds().size;
    scale_ = screen.scale();
    host_ = &host;
    host.setTouchListener([this, next = std::move(next)](const platform::TouchEvent& event) {
        recorder_->touch(event);
        if (next)
            next(event);
    });
    host.setSizeListener(
        [this](platform::Size size, double /*scale*/) { recorder_->note(ResizeAction{size}); });
    recorder_->begin(size_);
}

std::optional<Error> WindowRecording::end() {
    if (auto* const host = std::exchange(host_, nullptr)) {
        host->setTouchListener({});
        host->setSizeListener({});
    }
    recorder_.reset();
    if (file_.is_open())
        file_.close();
    if (!file_)
        return cannotBeWritten(path_);
    return std::nullopt;
}

std::string WindowRecording::playbackOptions(const platform::TouchSlop& slop) const {
    std::string options = "--actions " + path_ + " --size " + textOf(std::round(size_.width)) +
                          "x" + textOf(std::round(size_.height)) + " --scale " + textOf(scale_);
    // The command line sets both values to the same number, or leaves both at their defaults.
    if (slop.finger == slop.mouse)
        options += " --touch-slop " + textOf(slop.finger);
    return options;
}
