#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The content of a resource that was fetched.
using Data = std::vector<std::uint8_t>;

/// The limits beyond which a transfer is aborted.
struct TransferLimits {
    /// Of the body. A longer body is refused as soon as its length is known.
    std::uint64_t maxBytes = std::uint64_t{512} << 20;
    /// Until a connection is established, including encryption. Every redirect to another host
    /// starts this time again.
    Instant connectTime = std::chrono::seconds(30);
    /// Between two bytes, and from the request to the first byte.
    Instant stallTime = std::chrono::seconds(60);
    int maxRedirects = 10;
    /// A PEM file of the certificates that are trusted instead of the machine's. Empty: the
    /// machine's certificates are trusted.
    std::string certificateFile = {};
};

/// The progress of a transfer.
struct TransferProgress {
    std::uint64_t bytesReceived = 0;
    /// `nullopt` where the sender does not say.
    std::optional<std::uint64_t> bytesExpected = {};
    /// The status of the server's response, such as 404; 0 where there is none.
    int status = 0;
};

/// The resource to fetch, and the callbacks that report on the transfer.
struct TransferRequest {
    /// Its scheme is http, https or file.
    URL url;
    TransferLimits limits = {};
    /// Called on any thread, without a lock, between the start and the end.
    std::function<void(const TransferProgress&)> progressed = {};
    /// Called once, on any thread, without a lock, and never inside `start`; no callback follows
    /// it. The captured objects may be destroyed on any thread, too.
    std::function<void(Result<Data>)> ended = {};
};

/// A transfer in progress. The destructor stops it without waiting, so a callback that has already
/// begun may still be running afterwards.
class ZANTO_EXPORT Transfer {
public:
    virtual ~Transfer() = default;
};

/// Fetches resources by their address.
///
/// A body is delivered whatever status an HTTP server returns. Redirects are followed only to http
/// and https; certificates are verified.
///
/// Owner:  a session. The destructor stops every transfer.
/// Thread: main. No call waits for the network or a disk.
/// Errors: passed to `ended`; the detail is the cause, as one sentence without a full stop: Missing
///         (no such file or host), Unreadable (refused, truncated, certificate, timed out, too many
///         redirects, not a readable file), Unsupported (another scheme), Corrupt (the response is
///         not HTTP), TooLarge (over `maxBytes` or over the available memory).
class ZANTO_EXPORT TransferService {
public:
    virtual ~TransferService() = default;
    [[nodiscard]] virtual std::unique_ptr<Transfer> start(TransferRequest request) = 0;
};

/// A backend library defines this function. The service does nothing until the first `start`.
[[nodiscard]] ZANTO_EXPORT std::unique_ptr<TransferService> makeTransferService();

} // namespace platform
