#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/Transfer.h"

#include <curl/curl.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// What is known about a failed transfer.
struct FailedTransfer {
    CURL* easy;
    const TransferLimits& limits;
    std::size_t bytesReceived;
    std::string_view words; // libcurl's error message, which says more than the error code
};

/// Describes why a transfer failed.
[[nodiscard]] Error transferError(CURLcode code, const FailedTransfer& transfer);

/// The error of a transfer that received nothing for longer than the stall time.
[[nodiscard]] Error stalledError(const FailedTransfer& transfer);

/// Returns an error unless `path` is a regular file. Opening a pipe, for example, would block until
/// there is a writer.
[[nodiscard]] std::optional<Error> refusalOfFile(const std::string& path);

} // namespace platform
