#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Imaging/Image.h"

#include <memory>
#include <optional>
#include <string>

/// Another program's window on an X server, as a person at its screen would have it.
class DesktopWindow {
public:
    /// The window of that title; null while there is none.
    [[nodiscard]] static std::unique_ptr<DesktopWindow> find(const std::string& display,
                                                             const std::string& title);
    ~DesktopWindow();
    DesktopWindow(const DesktopWindow&) = delete;
    DesktopWindow& operator=(const DesktopWindow&) = delete;

    /// What it shows; null while it cannot be read.
    [[nodiscard]] platform::ImagePtr picture() const;
    void resize(platform::SizePx size) const;
    /// The left mouse button goes down at one place, and up at the other after a move there.
    void drag(platform::Point from, platform::Point to) const;
    /// What a click on the title bar's cross does.
    void close() const;

private:
    struct Handles;
    explicit DesktopWindow(std::unique_ptr<Handles> handles);
    std::unique_ptr<Handles> handles_;
};
