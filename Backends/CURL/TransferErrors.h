#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/Transfer.h"

#include <curl/curl.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// What is known of a transfer that has failed.
struct FailedTransfer {
    CURL* easy;
    const TransferLimits& limits;
    std::size_t bytesReceived;
    std::string_view words; // of libcurl, for a cause that its code does not tell
};

/// Why it failed, in words.
[[nodiscard]] Error transferError(CURLcode code, const FailedTransfer& transfer);

/// For one that said nothing for too long.
[[nodiscard]] Error stalledError(const FailedTransfer& transfer);

/// Only what can be opened and read to its end: opening a pipe would wait for a writer.
[[nodiscard]] std::optional<Error> refusalOfFile(const std::string& path);

} // namespace platform
