#include "Backends/GStreamer/HostPlayback.h"

#include <algorithm>
#include <utility>

namespace platform {

Instant HostPlayback::positionAt(Instant host) {
    const Instant position = timeline().at(host);
    return timeline().isRunning() && frames().isOver() ? std::min(position, end()) : position;
}

std::optional<MediaFrame> HostPlayback::frameAt(Instant itemTime) {
    return frames().newestAt(itemTime);
}

bool HostPlayback::isFirstPictureSettled() {
    playbin().takesPictures();
    return frames().hasBegun() || frames().take() || frames().isOver();
}

bool HostPlayback::isDecodedTo(Instant itemTime) {
    if (isClosed() || hasFailed())
        return true;
    if (!decodeTo(itemTime)) {
        waitFor(itemTime, true);
        return false;
    }
    stopWaiting();
    if (isPastEnd())
        later([this] { endIfPast(); });
    return true;
}

bool HostPlayback::decodeTo(Instant itemTime) {
    if (!isReady() || isSeeking())
        return false;
    playbin().takesPictures();
    while (!frames().isSettledAt(itemTime) && frames().take()) {
    }
    reachPictures();
    return frames().isSettledAt(itemTime) || frames().isOver();
}

void HostPlayback::waitFor(Instant itemTime, bool isAsked) {
    wanted_ = Wanted{itemTime, isAsked};
    if (decodeWork_)
        return;
    decodeWork_ = beginWork();
    beginWait();
}

void HostPlayback::stopWaiting() {
    wanted_.reset();
    decodeWork_.reset();
}

void HostPlayback::picturesArrived() {
    if (!wanted_ || !decodeTo(wanted_->time))
        return;
    const bool isAsked = std::exchange(wanted_, std::nullopt)->isAsked;
    const Work work = std::move(decodeWork_);
    endWait();
    if (isAsked)
        tell(&MediaPipelineListener::mediaDidDecode);
    if (!isClosed())
        endIfPast();
}

void HostPlayback::update() {
    const Instant now = MainQueue::main().now();
    const bool runs = isReady() && wantsToPlay() && !isSeeking() && !hasEnded();
    if (runs == timeline().isRunning())
        return;
    ++run_;
    if (!runs)
        return timeline().hold(now);
    timeline().run(now);
    later([this] { startIfOwed(); });
    lookForEndAt(duration().value_or(end()));
}

void HostPlayback::startIfOwed() {
    if (timeline().isRunning() && takeOwedStart())
        tell(&MediaPipelineListener::mediaDidStart);
}

/// Detects the end even if no frames are requested.
void HostPlayback::lookForEndAt(Instant itemTime) {
    auto& queue = MainQueue::main();
    const std::weak_ptr<Playback> weak = weak_from_this();
    queue.asyncAfter(itemTime - timeline().at(queue.now()), [this, weak, run = run_] {
        const auto self = weak.lock();
        if (self && !isClosed() && run == run_)
            lookForEnd();
    });
}

void HostPlayback::lookForEnd() {
    const Instant position = timeline().at(MainQueue::main().now());
    if (!decodeTo(position)) {
        if (!wanted_)
            waitFor(position, false);
        // Check again as soon as that frame has been decoded, and not before.
        return lookForEndAt(position);
    }
    if (isPastEnd())
        endIfPast();
    else
        lookForEndAt(end());
}

bool HostPlayback::isPastEnd() {
    return timeline().isRunning() && frames().isOver() &&
           timeline().at(MainQueue::main().now()) >= end();
}

void HostPlayback::endIfPast() {
    if (!isPastEnd())
        return;
    setEnded();
    update();
    timeline().moveTo(end(), MainQueue::main().now());
    tell(&MediaPipelineListener::mediaDidEnd);
}

} // namespace platform
