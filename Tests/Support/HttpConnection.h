#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

struct ssl_ctx_st;
struct ssl_st;

namespace tests {

/// A request as it came.
struct HttpRequest {
    std::string method;
    /// Path and query.
    std::string target;
    /// By names in lower case.
    std::map<std::string, std::string> headers;
    /// Which of the server's connections brought it, from 1.
    int connection = 0;

    /// Empty for a header that is missing.
    [[nodiscard]] std::string header(const std::string& name) const;
    [[nodiscard]] std::string range() const { return header("range"); }
};

/// A server's end of one connection.
///
/// Thread: that of the connection; `resume` and `hangUp` any.
class HttpConnection {
public:
    /// Takes over the socket. With a context it speaks TLS.
    HttpConnection(int socket, ssl_ctx_st* tls);
    ~HttpConnection();
    HttpConnection(const HttpConnection&) = delete;
    HttpConnection& operator=(const HttpConnection&) = delete;

    /// The next one; none once the client has gone or speaks something else.
    [[nodiscard]] std::optional<HttpRequest> readRequest();
    /// False once the client has gone.
    [[nodiscard]] bool send(std::string_view bytes);

    enum class Wait { Resumed, TimedOut, Gone };
    /// Without a limit: until `resume()`, or until the client has gone.
    [[nodiscard]] Wait wait(std::optional<std::chrono::milliseconds> limit);
    void resume() const;
    /// Ends it in both directions; whatever waits comes back.
    void hangUp() const;
    /// Its end tells the client that something went wrong, and drops what is still on its way.
    void resetAtEnd() const;

private:
    [[nodiscard]] std::optional<std::string> readHead();
    [[nodiscard]] long receive(char* bytes, std::size_t size);

    int socket_;
    ssl_st* tls_ = nullptr;
    int wakeUp_;
    std::string received_; // and not asked for yet
};

} // namespace tests
