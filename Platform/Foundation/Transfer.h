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

/// The bytes of something that was fetched.
using Data = std::vector<std::uint8_t>;

/// How far a transfer may go before it is given up.
struct TransferLimits {
    /// Of a body; a longer one is refused as soon as that is known.
    std::uint64_t maxBytes = std::uint64_t{512} << 20;
    /// Until a connection stands, encryption included. Each redirect to another host has it anew.
    Instant connectTime = std::chrono::seconds(30);
    /// Between two bytes, and from the request to the first.
    Instant stallTime = std::chrono::seconds(60);
    int maxRedirects = 10;
    /// Certificates that are trusted in place of the machine's, in a PEM file. Empty: the
    /// machine's.
    std::string certificateFile = {};
};

/// How far a transfer is.
struct TransferProgress {
    std::uint64_t bytesReceived = 0;
    /// None where the sender does not say.
    std::optional<std::uint64_t> bytesExpected = {};
    /// Of the server's answer, such as 404; 0 where there was none.
    int status = 0;
};

/// What to fetch, and who hears of it.
struct TransferRequest {
    /// Of http, https or file.
    URL url;
    TransferLimits limits = {};
    /// Called from any thread, outside any lock, between the start and the end.
    std::function<void(const TransferProgress&)> progressed = {};
    /// Called once from any thread, outside any lock, and never inside the call that starts; then
    /// nothing is called any more. What is captured may be destroyed on any thread, too.
    std::function<void(Result<Data>)> ended = {};
};

/// A transfer under way. Its end stops it without waiting, so that a call which has begun by then
/// may still be running.
class ZANTO_EXPORT Transfer {
public:
    virtual ~Transfer() = default;
};

/// Fetches what lies behind addresses.
///
/// A body is delivered whatever status an HTTP server gives it. Redirects lead to http and https
/// only; certificates are checked.
///
/// Owner:  a session. Its end stops every transfer.
/// Thread: main. No call waits for the network or a disk.
/// Errors: of `ended`; the detail is the cause, as one sentence without a full stop:
///         Missing (no such file or host), Unreadable (refused, cut short, certificate, timed out,
///         too many redirects, not a file that can be read), Unsupported (another scheme),
///         Corrupt (the answer is not HTTP), TooLarge (over `maxBytes`, or over the memory).
class ZANTO_EXPORT TransferService {
public:
    virtual ~TransferService() = default;
    [[nodiscard]] virtual std::unique_ptr<Transfer> start(TransferRequest request) = 0;
};

/// The definition is the backend's, chosen by linking. Nothing runs until the first start.
[[nodiscard]] ZANTO_EXPORT std::unique_ptr<TransferService> makeTransferService();

} // namespace platform
