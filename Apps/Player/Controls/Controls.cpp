#include "Apps/Player/Controls/Controls.h"

#include <algorithm>
#include <cmath>

using platform::Instant;
using platform::Point;
using platform::TouchEvent;
using platform::TouchKind;
using platform::TouchPhase;

namespace {

/// How far a finger may move and still tap, in points.
constexpr double kTapSlop = 10;
/// How far beside its control a press may end, in points.
constexpr double kPressSlop = 16;
/// How often an indeterminate progress bar is redrawn.
constexpr Instant kLoadingStep = std::chrono::milliseconds(50);

bool isNear(Point one, Point other, double distance) {
    return std::hypot(one.x - other.x, one.y - other.y) <= distance;
}

bool isNear(const platform::Rect& area, Point point, double distance) {
    const platform::Rect wide{{area.origin.x - distance, area.origin.y - distance},
                              {area.size.width + 2 * distance, area.size.height + 2 * distance}};
    return contains(wide, point);
}

} // namespace

bool Controls::touch(const TouchEvent& event, Instant now) {
    switch (event.phase) {
    case TouchPhase::Down:
        return touchDown(event, now);
    case TouchPhase::Move:
        touchMoved(event, now);
        break;
    case TouchPhase::Up:
    case TouchPhase::Cancel:
        touchEnded(event, now);
        break;
    }
    return false;
}

bool Controls::touchDown(const TouchEvent& event, Instant now) {
    const ControlsState state = client_.state();
    if (state.showsHelp) {
        press(Control::Help, event, now); // the help covers everything, so every press closes it
        return true;
    }
    const ControlsLayout layout = layOutControls(size_, state);
    const bool isOnNotice = contains(layout.message, event.location) ||
                            (showsLoading(now) && contains(layout.loading, event.location));
    if (isOnNotice) {
        press(layout.noticeControlAt(event.location), event, now);
        return true;
    }
    const bool wasShown = fade_.isShown(now);
    fade_.show(now);
    if (wasShown && contains(layout.panel, event.location)) {
        press(layout.controlAt(event.location), event, now);
        return true;
    }
    tap_ = event;
    wasShownBeforeTap_ = wasShown;
    return false;
}

void Controls::press(std::optional<Control> control, const TouchEvent& event, Instant now) {
    if (press_)
        return; // only one press at a time
    press_ = Press{event.id, control};
    updateHold(now);
    if (control && isBar(*control))
        slide(*control, event.location.x);
}

void Controls::touchMoved(const TouchEvent& event, Instant now) {
    if (press_ && press_->touch == event.id) {
        if (press_->control && isBar(*press_->control))
            slide(*press_->control, event.location.x);
        return;
    }
    if (tap_ && tap_->id == event.id && !isNear(tap_->location, event.location, kTapSlop))
        tap_.reset();
    fade_.show(now);
}

void Controls::touchEnded(const TouchEvent& event, Instant now) {
    const bool isUp = event.phase == TouchPhase::Up;
    if (tap_ && tap_->id == event.id) {
        // After a tap with a mouse, the controls would reappear with its next move, so only a
        // finger hides them.
        if (isUp && wasShownBeforeTap_ && event.kind == TouchKind::Finger)
            fade_.hide(now);
        tap_.reset();
    }
    if (!press_ || press_->touch != event.id)
        return;
    const auto control = press_->control;
    press_.reset();
    if (pointedAt_ != Control::SeekBar)
        seekPoint_.reset();
    updateHold(now);
    if (!isUp || !control || isBar(*control))
        return;
    const ControlsState state = client_.state();
    const ControlsLayout layout = layOutControls(size_, state);
    const auto isOn = [&](const std::optional<ControlsLayout::Place>& place) {
        return place && place->control == *control &&
               isNear(place->area, event.location, kPressSlop);
    };
    const auto* const area = layout.areaOf(*control);
    const bool isThere = area != nullptr && isNear(*area, event.location, kPressSlop);
    if (state.showsHelp || isThere || isOn(layout.cancel) || isOn(layout.dismiss))
        activate(*control);
}

void Controls::activate(Control control) {
    if (const auto action = actionOf(control))
        client_.perform(*action);
    else if (control == Control::CancelLoading)
        client_.cancelLoading();
    else if (control == Control::DismissMessage)
        client_.dismissMessage();
}

void Controls::slide(Control bar, double x) {
    const ControlsState state = client_.state();
    const ControlsLayout layout = layOutControls(size_, state);
    const auto* const area = layout.areaOf(bar);
    if (!area || !state.video)
        return;
    const double fraction = fractionAt(*area, x);
    if (bar == Control::VolumeBar)
        return client_.setVolume(fraction);
    seekPoint_ = fraction;
    if (state.video->duration)
        client_.seekTo(fraction * *state.video->duration);
}

void Controls::pointAt(std::optional<Point> point, Instant now) {
    if (point)
        fade_.show(now);
    const ControlsLayout at = layout();
    pointedAt_ = point ? at.noticeControlAt(*point) : std::nullopt;
    if (point && !pointedAt_)
        pointedAt_ = at.controlAt(*point);
    seekPoint_.reset();
    if (pointedAt_ == Control::SeekBar)
        seekPoint_ = fractionAt(*at.areaOf(Control::SeekBar), point->x);
    updateHold(now);
}

void Controls::updateHold(Instant now) {
    fade_.setHeld(press_.has_value() || pointedAt_.has_value(), now);
}

void Controls::noteLoading(const ControlsState& state, Instant now) {
    if (!state.loading)
        loadingSince_.reset();
    else if (!loadingSince_)
        loadingSince_ = now;
    isLoadingEndless_ = state.loading && !state.loading->fraction;
}

bool Controls::showsLoading(Instant now) const {
    return loadingSince_ && now - *loadingSince_ >= kLoadingPatience;
}

ControlsPicture Controls::picture(Instant now) {
    ControlsPicture picture;
    picture.state = client_.state();
    noteLoading(picture.state, now);
    picture.layout = layOutControls(size_, picture.state);
    picture.opacity = fade_.opacity(now);
    picture.showsLoading = showsLoading(now);
    if (picture.showsLoading)
        picture.loadingTime = now - *loadingSince_ - kLoadingPatience;
    last_ = look(now);
    picture.pointedAt = last_.pointedAt;
    picture.pressed = last_.pressed;
    picture.seekPoint = last_.seekPoint;
    wasSeen_ = !picture.isEmpty();
    return picture;
}

Controls::Look Controls::look(Instant now) const {
    const double opacity = fade_.opacity(now);
    const bool isMoving = isLoadingEndless_ && showsLoading(now);
    return {opacity,
            showsLoading(now),
            isMoving ? (now - *loadingSince_) / kLoadingStep : 0,
            opacity > 0 ? pointedAt_ : std::nullopt,
            press_ ? press_->control : std::nullopt,
            opacity > 0 ? seekPoint_ : std::nullopt};
}

std::optional<Instant> Controls::nextChange(Instant now) {
    noteLoading(client_.state(), now);
    std::optional<Instant> next = fade_.nextChange(now);
    const auto take = [&next](Instant instant) {
        next = next ? std::min(*next, instant) : instant;
    };
    if (loadingSince_ && !showsLoading(now))
        take(*loadingSince_ + kLoadingPatience);
    else if (isLoadingEndless_)
        take(*loadingSince_ + ((now - *loadingSince_) / kLoadingStep + 1) * kLoadingStep);
    return next;
}

bool Controls::isSeen(Instant now) const {
    const ControlsState state = client_.state();
    return wasSeen_ || fade_.opacity(now) > 0 || showsLoading(now) || state.showsHelp ||
           !state.message.empty();
}

bool Controls::isOutdated(Instant now) {
    noteLoading(client_.state(), now);
    return look(now) != last_;
}
