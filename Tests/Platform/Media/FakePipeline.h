#pragma once

#include "Platform/Foundation/MainQueue.h"
#include "Platform/Media/MediaPipeline.h"
#include "Platform/Media/Player.h"
#include "Platform/Media/PlayerItem.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace tests {

/// What a test does to a pipeline and sees of it, beyond the pipeline's own end.
struct PipelineScript {
    std::weak_ptr<platform::MediaPipelineListener> listener;
    /// "play;pause;seek 2.5;volume 0.6;" and, at its end, "gone;".
    std::string asked;
    platform::MediaPacing pacing = platform::MediaPacing::Machine;
    platform::Instant position{0};
    std::map<platform::Instant, platform::PixelBufferPtr> frames;
    bool isDecoded = true;

    [[nodiscard]] platform::MediaPipelineListener& to() const { return *listener.lock(); }
};

/// Does what its script says and nothing by itself.
class FakePipeline final : public platform::MediaPipeline {
public:
    explicit FakePipeline(std::shared_ptr<PipelineScript> script) : script_(std::move(script)) {}
    ~FakePipeline() override { script_->asked += "gone;"; }
    FakePipeline(const FakePipeline&) = delete;
    FakePipeline& operator=(const FakePipeline&) = delete;

    void play() override { script_->asked += "play;"; }
    void pause() override { script_->asked += "pause;"; }
    void seek(platform::Instant to) override {
        script_->asked += "seek " + shortText(platform::toSeconds(to)) + ";";
    }
    void setVolume(double volume) override {
        script_->asked += "volume " + shortText(volume) + ";";
    }
    [[nodiscard]] platform::Instant positionAt(platform::Instant hostTime) const override {
        return script_->position + (hostTime - platform::MainQueue::main().now());
    }
    [[nodiscard]] std::optional<platform::MediaFrame> frameAt(platform::Instant itemTime) override {
        const auto next = script_->frames.upper_bound(itemTime);
        if (next == script_->frames.begin())
            return std::nullopt;
        return platform::MediaFrame{std::prev(next)->first, std::prev(next)->second};
    }
    [[nodiscard]] bool isDecodedTo(platform::Instant /*itemTime*/) override {
        return script_->isDecoded;
    }

private:
    /// Without the zeros at the end.
    static std::string shortText(double number) {
        std::string text = std::to_string(number);
        text.erase(text.find_last_not_of('0') + 1);
        return text.back() == '.' ? text.substr(0, text.size() - 1) : text;
    }
    std::shared_ptr<PipelineScript> script_;
};

/// An item whose pipeline is the script's.
[[nodiscard]] inline std::shared_ptr<platform::PlayerItem>
itemOf(const std::shared_ptr<PipelineScript>& script) {
    return platform::make<platform::PlayerItem>(
        platform::URL::fileURLWithPath("/clip.mp4"),
        [script](const platform::URL&, platform::MediaPacing pacing,
                 std::weak_ptr<platform::MediaPipelineListener> listener) {
            script->pacing = pacing;
            script->listener = std::move(listener);
            return std::make_unique<FakePipeline>(script);
        });
}

/// Pixels whose values do not matter.
[[nodiscard]] inline platform::PixelBufferPtr anyPixels() {
    return platform::PixelBuffer::wrap({2, 2}, {}, {}, nullptr);
}

} // namespace tests
