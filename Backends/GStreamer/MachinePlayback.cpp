#include "Backends/GStreamer/MachinePlayback.h"

#include <algorithm>

namespace platform {

Instant MachinePlayback::positionAt(Instant host) {
    readClock();
    const Instant position = timeline().at(host);
    if (!isReady() || !duration() || position <= *duration())
        return position;
    // Either the end is near, or the duration known so far is too short.
    playbin().askDuration();
    return *duration();
}

void MachinePlayback::readClock() {
    if (isClosed() || !timeline().isRunning())
        return;
    const auto reading = playbin().reading();
    if (!reading || reading->at < runsSince_)
        return;
    const Instant ago = std::chrono::steady_clock::now() - reading->at;
    const Instant position = reading->position - frames().origin();
    timeline().correct(MainQueue::main().now() - ago, position);
    reach(position);
}

std::optional<MediaFrame> MachinePlayback::frameAt(Instant itemTime) {
    // During a seek, the sink may hold frames from before and after it.
    if (!isSeeking())
        frames().takeAll();
    reachPictures();
    return frames().newestAt(itemTime);
}

bool MachinePlayback::isFirstPictureSettled() {
    frames().take();
    return true;
}

bool MachinePlayback::shouldPlay() const {
    return isReady() && wantsToPlay() && !isShort_ && !hasEnded();
}

void MachinePlayback::update() {
    if (shouldPlay() != isToldToPlay_) {
        isToldToPlay_ = shouldPlay();
        obeys_ = false;
        playbin().setPlaying(isToldToPlay_, ++order_);
    }
    runOrHold();
}

void MachinePlayback::runOrHold() {
    const bool runs = isToldToPlay_ && obeys_ && !isSeeking();
    if (runs == timeline().isRunning())
        return;
    const Instant now = MainQueue::main().now();
    if (!runs)
        return timeline().hold(now);
    runsSince_ = std::chrono::steady_clock::now();
    timeline().run(now);
}

void MachinePlayback::plays(int order) {
    if (order != order_ || !isToldToPlay_)
        return;
    obeys_ = true;
    runOrHold();
    if (timeline().isRunning() && takeOwedStart())
        tell(&MediaPipelineListener::mediaDidStart);
}

void MachinePlayback::reopened() {
    isShort_ = false;
    isToldToPlay_ = false;
    ++order_;
    update();
}

void MachinePlayback::streamsEnded() {
    if (isSeeking() || hasEnded() || !isToldToPlay_)
        return;
    const Instant now = MainQueue::main().now();
    setEnded();
    update();
    timeline().moveTo(std::max(timeline().at(now), duration().value_or(frames().end())), now);
    tell(&MediaPipelineListener::mediaDidEnd);
}

void MachinePlayback::buffered(bool isEnough) {
    isShort_ = !isEnough;
    if (isReady() && isShort_)
        beginWait();
    else if (isReady() && !isSeeking())
        endWait();
    const bool stalls = isShort_ && isReady() && isToldToPlay_ && !owesStart();
    update();
    if (!stalls)
        return;
    oweStart();
    tell(&MediaPipelineListener::mediaDidStall);
}

} // namespace platform
