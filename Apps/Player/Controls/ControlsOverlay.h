#pragma once

#include "Apps/Player/Controls/Controls.h"
#include "Platform/Foundation/Object.h"

#include <memory>
#include <optional>

class ControlsPainter;
namespace zanto {
class SDLHost;
} // namespace zanto

/// Shows the controls in the window of the SDL host: draws them over the frames, forwards touches
/// to them, and requests frames only while they change.
///
/// Owner:  the program; the host and the client must outlive it. Made with `platform::make`.
/// Thread: main.
class ControlsOverlay final : public platform::Object {
public:
    ControlsOverlay(zanto::SDLHost& host, ControlsClient& client);
    ~ControlsOverlay() override;
    void init() override;

    /// Call this when the client's state has changed: redraws the controls if they are visible.
    void update();
    /// Shows the controls, as user input does.
    void show();

private:
    void draw(platform::Size size, double scale);
    bool touch(const platform::TouchEvent& event);
    void pointAt(std::optional<platform::Point> point);
    /// Requests a frame if the current one is out of date, and schedules the next change.
    void settle();
    void awaitNextChange();

    zanto::SDLHost& host_;
    Controls controls_;
    std::unique_ptr<ControlsPainter> painter_; // null until there is something to draw
    std::optional<platform::Instant> wake_;    // time of the current scheduled block
    bool isPointerShown_ = true;
};
