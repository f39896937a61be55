#pragma once

#include "Tests/Support/HttpConnection.h"
#include "Tests/Support/HttpReply.h"

#include <memory>
#include <string>
#include <vector>

namespace tests {

class TlsIdentity;

/// An HTTP/1.1 server on 127.0.0.1, at a port that was free, in threads of its own.
///
/// ```cpp
/// tests::HttpServer server;
/// server.serve("/a.png", {.body = bytes, .stallAfter = 100});
/// start(server.url("/a.png"));
/// ASSERT_TRUE(server.waitUntilStalled());
/// server.release();
/// ```
///
/// It answers GET and HEAD; what is not served is a 404. A reply that is given anew counts from the
/// next request on.
///
/// Owner:  the test. Its end ends every connection, whatever that waits for.
/// Thread: any.
class HttpServer {
public:
    enum class Transport { Plain, Tls };

    /// With TLS it has a certificate that only those trust who are given it.
    explicit HttpServer(Transport transport = Transport::Plain);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    [[nodiscard]] int port() const;
    /// A file that holds the certificate, while the server lives.
    [[nodiscard]] std::string certificateFile() const;
    /// The address of a path, which begins with a slash.
    [[nodiscard]] std::string url(const std::string& path) const;

    /// The path may carry a query; without one it stands for any.
    void serve(const std::string& path, HttpReply reply);
    /// A file as it is at the moment of each request, sent as `how` says.
    void serveFile(const std::string& path, const std::string& file, HttpReply how = {});
    /// The files below a folder, for every path that begins with `prefix`, which ends in a slash.
    void serveFolder(const std::string& prefix, const std::string& folder, HttpReply how = {});

    /// Lets the replies go on that stall at this moment.
    void release();
    /// Waits until so many replies stall. False: they have not within ten seconds.
    [[nodiscard]] bool waitUntilStalled(int count = 1) const;

    /// In the order in which they came.
    [[nodiscard]] std::vector<HttpRequest> requests() const;
    /// Those that were ever made.
    [[nodiscard]] int connections() const;
    [[nodiscard]] int openConnections() const;
    /// Waits until so many are open. False: they are not within ten seconds.
    [[nodiscard]] bool waitForOpenConnections(int count) const;

private:
    struct Listener;
    std::unique_ptr<TlsIdentity> identity_; // null: plain
    std::unique_ptr<Listener> listener_;
};

/// A port of 127.0.0.1 without a listener for as long as the object lives.
class EmptyPort {
public:
    ~EmptyPort();
    EmptyPort(const EmptyPort&) = delete;
    EmptyPort& operator=(const EmptyPort&) = delete;

    [[nodiscard]] std::string url(const std::string& scheme, const std::string& path) const;

protected:
    EmptyPort();
    int socket_;
};

/// It refuses connections.
class RefusingPort : public EmptyPort {
public:
    [[nodiscard]] std::string url(const std::string& path) const;
};

/// It takes connections and never says anything.
class SilentPort : public EmptyPort {
public:
    SilentPort();
};

} // namespace tests
