#pragma once

#include "Benchmarks/BareVideoQuad.h"
#include "Platform/Graphics/OffscreenTarget.h"

#include <string>

/// The cheapest way to play a video: the media library's own player, paced, that decodes into a
/// sink which throws pictures away, and each of them drawn as a bare quad.
///
/// The GL context is current.
class BarePlayback {
public:
    explicit BarePlayback(const platform::OffscreenTarget& target) : target_(target) {}

    /// Plays a file of pictures of that size to its end; how many were drawn.
    ///
    /// Errors: an exception for what cannot be played.
    int play(const std::string& path, platform::SizePx size);

private:
    void draw(const BareVideoQuad& quad) const;

    const platform::OffscreenTarget& target_;
};
