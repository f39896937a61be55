#include "Hosts/Embedded/SampleKeeper.h"

#include "Platform/Foundation/MainQueue.h"

#include <chrono>

namespace zanto {

using platform::AttitudeSource;
using platform::Instant;
using platform::MainQueue;

namespace {

constexpr Instant kLongest = std::chrono::seconds(3);

} // namespace

void SampleKeeper::noteTouch(bool isAnyDown) {
    isTouched_ = isAnyDown;
    wake();
}

void SampleKeeper::noteTurn() {
    wake();
}

void SampleKeeper::wake() {
    end_ = MainQueue::main().now() + kLongest;
    if (beating_ || !hasListener())
        return;
    seen_ = AttitudeSource::shared().latest();
    beatAtNextFrame();
}

void SampleKeeper::beatAtNextFrame() {
    beating_ = std::make_shared<Beat>();
    MainQueue::main().asyncAfter(Instant(0), [this, alive = std::weak_ptr<Beat>(beating_)] {
        if (!alive.expired())
            beat();
    });
}

void SampleKeeper::beat() {
    beating_.reset();
    AttitudeSource& source = AttitudeSource::shared();
    if (!hasListener() || (!isTouched_ && MainQueue::main().now() >= end_))
        return;
    // A sensor never returns the same sample twice: a different sample means that it is working.
    if (source.latest() == seen_)
        source.publish(*seen_);
    seen_ = source.latest();
    beatAtNextFrame();
}

bool SampleKeeper::hasListener() {
    const AttitudeSource& source = AttitudeSource::shared();
    return source.isWanted() && source.isAvailable() && source.latest();
}

} // namespace zanto
