#pragma once

#include "Hosts/Embedded/EmbeddedHost.h"
#include "Hosts/Headless/SurfacelessContext.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Tests/Support/PaintedView.h"
#include "Tests/Support/RecordingController.h"

#include <atomic>
#include <memory>

/// A host application in virtual time: its context, its framebuffer, and one painted view in a
/// black window of 16 by 12 points.
class EmbeddedScene {
public:
    explicit EmbeddedScene(double framesPerSecond = 60.0);
    ~EmbeddedScene();
    EmbeddedScene(const EmbeddedScene&) = delete;
    EmbeddedScene& operator=(const EmbeddedScene&) = delete;

    [[nodiscard]] zanto::EmbeddedHost& host() { return *host_; }
    [[nodiscard]] RecordingController& controller() { return *controller_; }
    [[nodiscard]] platform::GLView& view() { return *painted_->view; }
    [[nodiscard]] Painter& painter() { return *painted_->painter; }
    [[nodiscard]] int wakeUps() const { return wakeUps_; }

    /// Goes to an instant without a turn of the host's.
    void jumpTo(platform::Instant instant) { clock_->advanceTo(instant); }
    /// One turn, and the pass if the host wants one. Whether it did.
    bool turn();
    /// One turn, and what the host wants then; nothing is drawn.
    zanto::EmbeddedHostStatus ask() { return host_->runDueWork(); }
    void draw();
    /// The host ends; context, clock and views stay.
    void endHost();

private:
    std::unique_ptr<zanto::SurfacelessContext> context_;
    std::shared_ptr<platform::VirtualClock> clock_ = std::make_shared<platform::VirtualClock>();
    std::atomic<int> wakeUps_ = 0;
    std::unique_ptr<zanto::EmbeddedHost> host_;
    std::unique_ptr<platform::OffscreenTarget> target_;
    std::shared_ptr<RecordingController> controller_;
    std::unique_ptr<PaintedView> painted_;
};

/// What a host application brings of a context.
[[nodiscard]] platform::GLBindings bindingsOf(const zanto::SurfacelessContext& context);

/// The instant of a frame, 60 of them a second.
[[nodiscard]] platform::Instant frame(int index);
