#pragma once

#include "Backends/GStreamer/Playback.h"

namespace platform {

/// Playback that is paced by the main queue's clock: frames are decoded on request, and a virtual
/// clock stands still meanwhile.
class HostPlayback final : public Playback {
public:
    using Playback::Playback;

    [[nodiscard]] Instant positionAt(Instant host) override;
    [[nodiscard]] std::optional<MediaFrame> frameAt(Instant itemTime) override;
    [[nodiscard]] bool isDecodedTo(Instant itemTime) override;

private:
    [[nodiscard]] MediaPacing pacing() const override { return MediaPacing::Host; }
    void update() override;
    void picturesArrived() override;
    [[nodiscard]] bool isFirstPictureSettled() override;
    void stopWaiting() override;
    [[nodiscard]] Work beginWork() const override { return MainQueue::main().beginWork(); }

    [[nodiscard]] bool decodeTo(Instant itemTime);
    void waitFor(Instant itemTime, bool isAsked);
    [[nodiscard]] bool isPastEnd();
    void lookForEndAt(Instant itemTime);
    void lookForEnd();
    void endIfPast();
    void startIfOwed();

    struct Wanted {
        Instant time{0};
        bool isAsked = false; ///< the listener must be notified
    };
    std::optional<Wanted> wanted_;
    Work decodeWork_;
    int run_ = 0; // incremented whenever the timeline starts or stops
};

} // namespace platform
