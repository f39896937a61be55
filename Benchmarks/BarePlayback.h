#pragma once

#include "Benchmarks/BareVideoQuad.h"
#include "Platform/Graphics/OffscreenTarget.h"

#include <string>

/// The cheapest way to play a video: GStreamer's own player, paced, decodes into a sink that
/// discards frames, and each frame is drawn as a bare quad.
///
/// The GL context must be current.
class BarePlayback {
public:
    explicit BarePlayback(const platform::OffscreenTarget& target) : target_(target) {}

    /// Plays a file with frames of that size to its end; returns the number of frames drawn.
    ///
    /// Errors: throws an exception if the file cannot be played.
    int play(const std::string& path, platform::SizePx size);

private:
    void draw(const BareVideoQuad& quad) const;

    const platform::OffscreenTarget& target_;
};
