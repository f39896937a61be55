#pragma once

#include "Backends/GStreamer/Playback.h"

namespace platform {

/// Paced by the machine's clock, or its sound device's: pictures turn up in the sink when their
/// time has come.
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

    bool isShort_ = false;      // of data
    bool isToldToPlay_ = false; // the pipeline
    int order_ = 0;             // counts what it was told
    bool obeys_ = false;        // it plays
    std::chrono::steady_clock::time_point runsSince_;
};

} // namespace platform
