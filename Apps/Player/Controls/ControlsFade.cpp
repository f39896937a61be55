#include "Apps/Player/Controls/ControlsFade.h"

#include <algorithm>

using platform::Instant;

namespace {

double fractionOf(Instant part, Instant whole) {
    return static_cast<double>(part.count()) / static_cast<double>(whole.count());
}

} // namespace

void ControlsFade::show(Instant now) {
    if (!isShown(now)) {
        const double opacityNow = opacity(now);
        appeared_ =
            now -
            Instant(static_cast<Instant::rep>(opacityNow * static_cast<double>(kAppear.count())));
    }
    wasShown_ = true;
    goes_ = now + kRest;
}

void ControlsFade::hide(Instant now) {
    isHeld_ = false;
    goes_ = std::min(goes_, now);
}

void ControlsFade::setHeld(bool held, Instant now) {
    if (held == isHeld_)
        return;
    show(now);
    isHeld_ = held;
}

double ControlsFade::opacity(Instant now) const {
    if (!wasShown_)
        return 0;
    const bool isHere = isShown(now);
    const Instant end = isHere ? now : goes_;
    const double there = std::clamp(fractionOf(end - appeared_, kAppear), 0.0, 1.0);
    return isHere ? there : std::max(0.0, there - fractionOf(now - goes_, kDisappear));
}

bool ControlsFade::isShown(Instant now) const {
    return wasShown_ && (isHeld_ || now < goes_);
}

std::optional<Instant> ControlsFade::nextChange(Instant now) const {
    if (!isShown(now))
        return opacity(now) > 0 ? std::optional(now) : std::nullopt;
    if (now < appeared_ + kAppear)
        return now;
    return isHeld_ ? std::nullopt : std::optional(goes_);
}
