#include "Backends/GStreamer/FrameQueue.h"

#include <algorithm>
#include <utility>

namespace platform {

void FrameQueue::startAtFirst() {
    origin_ = firstTaken_.value_or(Instant::zero());
    end_ -= origin_;
    furthest_ = {furthest_.time - origin_, furthest_.end - origin_};
}

void FrameQueue::standIn(PixelBufferPtr pixels) {
    sink_.reset();
    standIn_ = MediaFrame{Instant::zero(), std::move(pixels)};
}

void FrameQueue::restart(Instant from) {
    restartsFrom_ = from;
    end_ = from;
}

GStreamerPtr<GstSample> FrameQueue::nextSample() {
    if (!sink_)
        return nullptr;
    // While the pipeline is paused, the sink keeps the first frame after opening or a seek as its
    // preroll sample. Pulling an ordinary sample would discard it.
    if (GstSample* const sample = gst_app_sink_try_pull_preroll(sink_.get(), 0))
        return GStreamerPtr<GstSample>(sample);
    return GStreamerPtr<GstSample>(gst_app_sink_try_pull_sample(sink_.get(), 0));
}

bool FrameQueue::take() {
    auto sample = nextSample();
    if (!sample)
        return false;
    if (auto picture = videoSample(std::move(sample)))
        append(std::move(*picture));
    return true;
}

void FrameQueue::takeAll() {
    while (take()) {
    }
}

void FrameQueue::append(VideoSample sample) {
    const Instant time = sample.frame.time;
    if (!restartsFrom_ && time <= lastTaken_)
        return; // the preroll frame again
    // If a frame has no duration, the distance to the frame before is used.
    const Instant distance = restartsFrom_ ? Instant::zero() : time - lastTaken_;
    sample.frame.time -= origin_;
    if (restartsFrom_) {
        frames_.clear();
        sample.frame.time = std::min(sample.frame.time, *restartsFrom_);
        restartsFrom_.reset();
    }
    firstTaken_ = firstTaken_.value_or(time);
    lastTaken_ = time;
    const Instant begin = time - origin_;
    const Instant end = sample.end.value_or(time + distance) - origin_;
    longest_ = std::max(longest_, end - begin);
    end_ = std::max(end_, end);
    if (begin > furthest_.time)
        furthest_ = {begin, end};
    shownSize_ = sample.shownSize;
    frames_.push_back(std::move(sample.frame));
}

std::optional<MediaFrame> FrameQueue::newestAt(Instant time) {
    if (standIn_)
        return standIn_;
    const auto later = std::find_if(frames_.begin(), frames_.end(),
                                    [&](const MediaFrame& frame) { return frame.time > time; });
    if (later == frames_.begin())
        return std::nullopt;
    frames_.erase(frames_.begin(), std::prev(later));
    return frames_.front();
}

bool FrameQueue::isSettledAt(Instant time) const {
    return hasBegun() && !frames_.empty() && frames_.back().time > time;
}

bool FrameQueue::isOver() const {
    return !sink_ || gst_app_sink_is_eos(sink_.get()) != FALSE;
}

Instant FrameQueue::pictureLength() const {
    constexpr Instant kUnknown = std::chrono::milliseconds(40);
    return longest_ > Instant::zero() ? longest_ : kUnknown;
}

void FrameQueue::close() {
    sink_.reset();
    frames_.clear();
    standIn_.reset();
}

} // namespace platform
