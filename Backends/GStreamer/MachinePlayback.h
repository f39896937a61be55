#pragma once

#include "Backends/GStreamer/Playback.h"

namespace platform {

/// Playback that is paced by the machine's clock or that of its sound device: frames arrive in the
/// sink when they are due.
class MachinePlayback final : public Playback {
public:
    using Playback::Playback;

    [[nodiscard]] Instant positionAt(Instant host) override;
    [[nodiscard]] std::optional<MediaFrame> frameAt(Instant itemTime) override;
    [[nodiscard]] bool isDecodedTo(Instant /*itemTime*/) override { return true; }

private:
    [[nodiscard]] MediaPacing pacing() const override { return MediaPacing::Machine; }
    void update() override;
    void plays(int order) override;
    void reopened() override;
    void streamsEnded() override;
    void buffered(bool isEnough) override;
    [[nodiscard]] bool isFirstPictureSettled() override;

    [[nodiscard]] bool shouldPlay() const;
    void runOrHold();
    void readClock();

    bool isShort_ = false;      // data is short; the pipeline is buffering
    bool isToldToPlay_ = false; // the last order to the pipeline
    int order_ = 0;             // number of that order
    bool obeys_ = false;        // the pipeline plays
    std::chrono::steady_clock::time_point runsSince_;
};

} // namespace platform
