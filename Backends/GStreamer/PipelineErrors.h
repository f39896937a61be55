#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"

#include <glib.h>

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// What is known about a failed pipeline beside the error that it posted.
struct FailureContext {
    /// Of the last answer; 0: none came.
    int httpStatus = 0;
    bool isRemote = false;
    /// Its first picture has been seen.
    bool isOpen = false;
};

/// Whether a file that begins so is a playlist of segments.
[[nodiscard]] bool isPlaylist(std::string_view beginning);

/// Why a file cannot be media, before anybody tries to play it; none where it may be.
[[nodiscard]] std::optional<Error> fileRefusal(const std::string& path);

[[nodiscard]] Error unknownKindError();
[[nodiscard]] Error missingDecoderError(const std::string& description);

/// The library's error in words.
[[nodiscard]] Error pipelineError(const GError& error, const FailureContext& context);

/// Asks the server itself why it cannot be reached, which the library does not say. It waits for
/// the network; none when the server can be reached.
[[nodiscard]] std::optional<Error> connectionError(const URL& url);

} // namespace platform
