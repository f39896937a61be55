#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tests {

class HttpConnection;

/// What a server says to a request, and how badly it behaves meanwhile. Bytes are counted in the
/// body, as it goes out.
struct HttpReply {
    enum class Framing {
        Length,     ///< Content-Length
        Chunked,    ///< Transfer-Encoding: chunked
        UntilClose, ///< no length; the end of the connection is the end of the body
    };

    int status = 200;
    std::vector<std::uint8_t> body = {};
    /// Empty: by the ending of the path.
    std::string contentType = {};
    /// Sent besides.
    std::vector<std::pair<std::string, std::string>> headers = {};
    Framing framing = Framing::Length;
    /// Told in place of the true length; the connection ends with the body.
    std::optional<std::uint64_t> toldLength = {};
    /// Whether a part can be had. If not, none is offered and the whole is sent to who asks.
    bool takesRanges = true;
    /// Says nothing at all until released.
    bool isSilent = false;
    /// Stops there until released.
    std::optional<std::size_t> stallAfter = {};
    /// Ends the connection there.
    std::optional<std::size_t> cutAfter = {};
    /// So many at a time, `dripPause` apart. 0: all at once.
    std::size_t dripBytes = 0;
    std::chrono::milliseconds dripPause{1};
    /// Sends the body again and again until the client has gone; never with a length.
    bool isEndless = false;
    /// Says all of it in place of the above, byte by byte, in the thread of the connection, which
    /// ends with it.
    std::function<void(HttpConnection&)> script = {};
};

/// A reply that sends the client somewhere else.
[[nodiscard]] inline HttpReply redirectTo(std::string location, int status = 302) {
    return {.status = status, .headers = {{"Location", std::move(location)}}};
}

} // namespace tests
