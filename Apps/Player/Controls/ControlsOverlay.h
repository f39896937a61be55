#pragma once

#include "Apps/Player/Controls/Controls.h"
#include "Platform/Foundation/Object.h"

#include <memory>
#include <optional>

class ControlsPainter;
class SDLHost;

/// The controls in the window of the SDL host: it draws them over the frames, hands them the
/// touches, and asks for frames while they change and for none while they do not.
///
/// Owner:  the program; host and client outlive it. Made with `platform::make`.
/// Thread: main.
class ControlsOverlay final : public platform::Object {
public:
    ControlsOverlay(SDLHost& host, ControlsClient& client);
    ~ControlsOverlay() override;
    void init() override;

    /// What the controls tell has changed: they show it where they are to be seen.
    void update();
    /// Has them appear, as somebody's stirring does.
    void show();

private:
    void draw(platform::Size size, double scale);
    bool touch(const platform::TouchEvent& event);
    void pointAt(std::optional<platform::Point> point);
    /// Asks for a frame if the one that is shown is not right any more, and sees to the next.
    void settle();
    void awaitNextChange();

    SDLHost& host_;
    Controls controls_;
    std::unique_ptr<ControlsPainter> painter_; // once there has been something to draw
    std::optional<platform::Instant> wake_;    // of the block that counts
    bool isPointerShown_ = true;
};
