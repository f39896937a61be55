#include "Tests/Backends/GStreamer/OpenedPipeline.h"

#include "Tests/Support/TestClips.h"

#include <algorithm>

using platform::Instant;

namespace tests {

void PipelineNotes::note(const std::string& event) {
    events.push_back(event);
    if (onEvent)
        onEvent(event);
}

void PipelineNotes::mediaIsReady(const platform::MediaDescription& description) {
    media = description;
    note("ready");
}

void PipelineNotes::mediaDidFail(const platform::Error& failure) {
    error = failure;
    note("fail");
}

int PipelineNotes::count(const std::string& event) const {
    return static_cast<int>(std::count(events.begin(), events.end(), event));
}

OpenedPipeline::OpenedPipeline(const platform::URL& url, platform::MediaPacing pacing,
                               QueueDriver::Time time)
    : queue(time), pipeline(platform::openMediaPipeline(url, pacing, notes)) {}

OpenedPipeline::OpenedPipeline(const std::string& path)
    : OpenedPipeline(platform::URL::fileURLWithPath(path), platform::MediaPacing::Host,
                     QueueDriver::Time::Virtual) {}

testing::AssertionResult OpenedPipeline::open() {
    if (!queue.runUntil([this] { return notes->media || notes->error; }))
        return testing::AssertionFailure() << "neither ready nor failed";
    if (notes->error)
        return testing::AssertionFailure() << "failed: " << notes->error->detail;
    return testing::AssertionSuccess();
}

std::optional<platform::MediaFrame> OpenedPipeline::decodedFrame(Instant itemTime) {
    if (!pipeline->isDecodedTo(itemTime) && !queue.settle())
        return std::nullopt;
    return pipeline->frameAt(itemTime);
}

std::optional<int> OpenedPipeline::frameAtItemTime(Instant itemTime) {
    const auto frame = decodedFrame(itemTime);
    return frame ? readFrameNumber(*frame->pixels) : std::nullopt;
}

std::optional<int> OpenedPipeline::frameAtHostTime(Instant hostTime) {
    return queue.advanceTo(hostTime) ? frameAtItemTime(position()) : std::nullopt;
}

Instant OpenedPipeline::position() const {
    return pipeline->positionAt(queue.now());
}

bool OpenedPipeline::seekAndWait(Instant to) {
    const int before = notes->count("seek");
    pipeline->seek(to);
    return queue.runUntil([&] { return notes->count("seek") > before; });
}

} // namespace tests
