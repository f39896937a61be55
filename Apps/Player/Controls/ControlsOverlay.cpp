#include "Apps/Player/Controls/ControlsOverlay.h"

#include "Apps/Player/Controls/ControlsPainter.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/Screen.h"

#include <algorithm>

using platform::Instant;
using platform::MainQueue;

ControlsOverlay::ControlsOverlay(zanto::SDLHost& host, ControlsClient& client)
    : host_(host), controls_(client) {}

ControlsOverlay::~ControlsOverlay() {
    host_.setOverlay({});
    host_.setTouchFilter({});
    host_.setPointerListener({});
    host_.setPointerShown(true);
}

void ControlsOverlay::init() {
    Object::init();
    const auto self = weak(this);
    host_.setOverlay([self](platform::Size size, double scale) {
        if (const auto alive = self.lock())
            alive->draw(size, scale);
    });
    host_.setTouchFilter([self](const platform::TouchEvent& event) {
        const auto alive = self.lock();
        return alive && alive->touch(event);
    });
    host_.setPointerListener([self](std::optional<platform::Point> point) {
        if (const auto alive = self.lock())
            alive->pointAt(point);
    });
    show();
}

void ControlsOverlay::draw(platform::Size size, double scale) {
    controls_.setSize(size);
    const ControlsPicture picture = controls_.picture(MainQueue::main().now());
    if (!picture.isEmpty()) {
        if (!painter_)
            painter_ = std::make_unique<ControlsPainter>();
        painter_->draw(picture, size, scale);
    }
    const bool showsPointer = picture.opacity > 0 || !picture.state.isFullScreen;
    if (showsPointer != isPointerShown_)
        host_.setPointerShown(isPointerShown_ = showsPointer);
    awaitNextChange();
}

bool ControlsOverlay::touch(const platform::TouchEvent& event) {
    controls_.setSize(platform::Screen::mainScreen().bounds().size);
    const bool isTaken = controls_.touch(event, MainQueue::main().now());
    settle();
    return isTaken;
}

void ControlsOverlay::pointAt(std::optional<platform::Point> point) {
    controls_.setSize(platform::Screen::mainScreen().bounds().size);
    controls_.pointAt(point, MainQueue::main().now());
    settle();
}

void ControlsOverlay::show() {
    controls_.show(MainQueue::main().now());
    settle();
}

void ControlsOverlay::update() {
    const Instant now = MainQueue::main().now();
    if (controls_.isSeen(now))
        host_.setNeedsFrame();
    awaitNextChange();
}

void ControlsOverlay::settle() {
    if (controls_.isOutdated(MainQueue::main().now()))
        host_.setNeedsFrame();
    awaitNextChange();
}

void ControlsOverlay::awaitNextChange() {
    const Instant now = MainQueue::main().now();
    const auto next = controls_.nextChange(now);
    if (!next)
        return;
    if (*next <= now)
        return host_.setNeedsFrame(); // drawing calls `settle` again
    // Only one scheduled block is current; a new one is scheduled only for an earlier change.
    if (wake_ && *wake_ <= *next)
        return;
    wake_ = next;
    MainQueue::main().asyncAfter(*next - now, [self = weak(this), own = *next] {
        const auto alive = self.lock();
        if (!alive || alive->wake_ != own)
            return;
        alive->wake_.reset();
        alive->settle();
    });
}
