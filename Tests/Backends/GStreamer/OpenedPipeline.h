#pragma once

#include "Platform/Media/MediaPipeline.h"
#include "Tests/Support/QueueDriver.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tests {

/// Notes what a pipeline tells, in words.
class PipelineNotes final : public platform::MediaPipelineListener {
public:
    void mediaIsReady(const platform::MediaDescription& media) override;
    void mediaDurationDidChange(platform::Instant changed) override { duration = changed; }
    void mediaDidFail(const platform::Error& error) override;
    void mediaDidStart() override { note("start"); }
    void mediaDidStall() override { note("stall"); }
    void mediaDidSeek() override { note("seek"); }
    void mediaDidEnd() override { note("end"); }
    void mediaDidDecode() override { note("decode"); }

    [[nodiscard]] int count(const std::string& event) const;

    std::vector<std::string> events;
    std::optional<platform::MediaDescription> media;
    std::optional<platform::Error> error;
    /// The latest that was told apart from `media`.
    std::optional<platform::Instant> duration;
    /// Called with every event.
    std::function<void(const std::string&)> onEvent;

private:
    void note(const std::string& event);
};

/// A pipeline, its listener, and the queue that they live on.
class OpenedPipeline {
public:
    OpenedPipeline(const platform::URL& url, platform::MediaPacing pacing, QueueDriver::Time time);
    /// Of a file, paced by the host in virtual time.
    explicit OpenedPipeline(const std::string& path);

    /// Waits until it is ready or has failed; whether it is ready.
    [[nodiscard]] testing::AssertionResult open();
    /// Moves virtual time on, has the pipeline decode to its position there, and reads the number
    /// of the frame that belongs to it; none if there is none.
    [[nodiscard]] std::optional<int> frameAtHostTime(platform::Instant hostTime);
    /// Of the frame at that place in the media, once it is decoded.
    [[nodiscard]] std::optional<int> frameAtItemTime(platform::Instant itemTime);
    [[nodiscard]] std::optional<platform::MediaFrame> decodedFrame(platform::Instant itemTime);
    [[nodiscard]] platform::Instant position() const;
    /// Seeks and waits until it is told that the seek is over.
    bool seekAndWait(platform::Instant to);

    QueueDriver queue;
    std::shared_ptr<PipelineNotes> notes = std::make_shared<PipelineNotes>();
    std::unique_ptr<platform::MediaPipeline> pipeline;
};

} // namespace tests
