#include "Backends/GStreamer/HostPlayback.h"
#include "Backends/GStreamer/MachinePlayback.h"
#include "Platform/Media/MediaPipeline.h"

#include <memory>
#include <utility>

namespace platform {
namespace {

/// The handle that the player item owns. An event handler that is running may outlive it; the
/// playback is closed then.
class GStreamerPipeline final : public MediaPipeline {
public:
    explicit GStreamerPipeline(std::shared_ptr<Playback> playback)
        : playback_(std::move(playback)) {}
    ~GStreamerPipeline() override { playback_->close(); }
    GStreamerPipeline(const GStreamerPipeline&) = delete;
    GStreamerPipeline& operator=(const GStreamerPipeline&) = delete;

    void play() override { playback_->play(); }
    void pause() override { playback_->pause(); }
    void seek(Instant to) override { playback_->seek(to); }
    void setVolume(double volume) override { playback_->setVolume(volume); }

    [[nodiscard]] Instant positionAt(Instant hostTime) const override {
        return playback_->positionAt(hostTime);
    }
    [[nodiscard]] std::optional<MediaFrame> frameAt(Instant itemTime) override {
        return playback_->frameAt(itemTime);
    }
    [[nodiscard]] bool isDecodedTo(Instant itemTime) override {
        return playback_->isDecodedTo(itemTime);
    }

private:
    const std::shared_ptr<Playback> playback_;
};

std::shared_ptr<Playback> makePlayback(const URL& url, MediaPacing pacing,
                                       std::weak_ptr<MediaPipelineListener> listener) {
    if (pacing == MediaPacing::Host)
        return std::make_shared<HostPlayback>(url, std::move(listener));
    return std::make_shared<MachinePlayback>(url, std::move(listener));
}

} // namespace

std::unique_ptr<MediaPipeline> openMediaPipeline(const URL& url, MediaPacing pacing,
                                                 std::weak_ptr<MediaPipelineListener> listener) {
    auto playback = makePlayback(url, pacing, std::move(listener));
    playback->open();
    return std::make_unique<GStreamerPipeline>(std::move(playback));
}

} // namespace platform
