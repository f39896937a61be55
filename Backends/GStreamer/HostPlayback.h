#pragma once

#include "Backends/GStreamer/Playback.h"

namespace platform {

/// Paced by the main queue's clock: pictures are decoded as they are asked for, and that clock
/// stands still meanwhile if it can.
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
        bool isAsked = false; ///< by somebody who is told
    };
    std::optional<Wanted> wanted_;
    Work decodeWork_;
    int run_ = 0; // counts how often time began or ceased to run
};

} // namespace platform
