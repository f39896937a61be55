#include "Apps/Player/Scripts/Recorder.h"

#include "Apps/Player/Scripts/ActionWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>

using nlohmann::ordered_json;
using platform::AttitudeSource;
using platform::Instant;
using platform::TouchPhase;

namespace {

constexpr Instant::rep kNanosecondsPerSecond = 1'000'000'000;

/// Formats an instant in seconds with all nine decimals, as in "12.000000345".
std::string secondsText(Instant instant) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%lld.%09lld",
                  static_cast<long long>(instant.count() / kNanosecondsPerSecond),
                  static_cast<long long>(instant.count() % kNanosecondsPerSecond));
    return text.data();
}

bool isDeviceMotion(const decltype(Action::what)& what) {
    const auto* const action = std::get_if<SwitchAction>(&what);
    return action != nullptr && action->which == SwitchAction::Switch::DeviceMotion;
}

const SwitchAction kDeviceMotionOn{SwitchAction::Switch::DeviceMotion, true};

} // namespace

Recorder::Recorder(std::ostream& script, Now now) : script_(script), now_(std::move(now)) {}

Recorder::~Recorder() {
    if (waiting_)
        writeAttitude(waiting_->at);
}

void Recorder::begin(platform::Size size) {
    isRecording_ = true;
    start_ = now_();
    write(Instant(0), describeAction(ResizeAction{size}));
    takeAttitude();
    attitudes_ = AttitudeSource::shared().subscribe([this] { takeAttitude(); });
}

Instant Recorder::sinceBegin(Instant instant) const {
    return std::max(instant - start_, last_);
}

void Recorder::takeAttitude() {
    const auto& sample = AttitudeSource::shared().latest();
    if (!sample || sample == lastAttitude_)
        return;
    if (waiting_)
        writeAttitude(waiting_->at);
    lastAttitude_ = sample;
    waiting_ = {sinceBegin(now_()), *sample};
    if (std::exchange(wantsDeviceMotion_, false))
        write(waiting_->at, describeAction(kDeviceMotionOn));
}

void Recorder::writeAttitude(Instant latest) {
    const Sample sample = *std::exchange(waiting_, std::nullopt);
    write(std::min(sample.at, latest), describeAction(AttitudeAction{sample.attitude}));
}

void Recorder::write(Instant at, const ordered_json& line) {
    if (waiting_)
        writeAttitude(at);
    last_ = at;
    script_ << R"({"at":)" << secondsText(at) << ',' << line.dump().substr(1) << '\n' << std::flush;
}

void Recorder::note(const decltype(Action::what)& what) {
    if (!isRecording_)
        return;
    takeAttitude(); // the source may have a sample that it has not yet sent
    if (isDeviceMotion(what)) {
        wantsDeviceMotion_ = std::get<SwitchAction>(what).on && !lastAttitude_;
        if (wantsDeviceMotion_)
            return;
    }
    write(sinceBegin(now_()), describeAction(what));
}

std::optional<std::int64_t> Recorder::idOf(const platform::TouchEvent& event) {
    const auto found = down_.find(event.id);
    const bool isDown = found != down_.end();
    if (isDown == (event.phase == TouchPhase::Down))
        return std::nullopt;
    if (!isDown)
        return down_[event.id] = ++touches_;
    const std::int64_t id = found->second;
    if (event.phase != TouchPhase::Move)
        down_.erase(found);
    return id;
}

void Recorder::touch(const platform::TouchEvent& event) {
    const bool isSomewhere = std::isfinite(event.location.x) && std::isfinite(event.location.y);
    if (!isRecording_ || !isSomewhere)
        return;
    platform::TouchEvent renamed = event;
    const auto id = idOf(event);
    if (!id)
        return;
    renamed.id = *id;
    write(sinceBegin(event.time), describeAction(TouchAction{renamed}));
}
