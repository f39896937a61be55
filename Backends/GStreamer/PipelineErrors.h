#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"

#include <glib.h>

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Context of a failed pipeline beside the error message itself.
struct FailureContext {
    /// The status of the last HTTP response; 0 if there was none.
    int httpStatus = 0;
    bool isRemote = false;
    /// Whether the pipeline has prerolled.
    bool isOpen = false;
};

/// Whether a file that begins with these bytes is a playlist of segments (HLS or DASH).
[[nodiscard]] bool isPlaylist(std::string_view beginning);

/// Why a file cannot be played, checked before the pipeline opens it; nullopt if it may be media.
[[nodiscard]] std::optional<Error> fileRefusal(const std::string& path);

[[nodiscard]] Error unknownKindError();
[[nodiscard]] Error missingDecoderError(const std::string& description);

/// Translates a GStreamer error.
[[nodiscard]] Error pipelineError(const GError& error, const FailureContext& context);

/// Connects to the server to find out why it cannot be reached, because GStreamer does not say.
/// Blocks on the network for up to 5 s; returns nullopt if the server can be reached.
[[nodiscard]] std::optional<Error> connectionError(const URL& url);

} // namespace platform
