#include "Tests/Support/HttpServer.h"

#include "Platform/Foundation/URL.h"
#include "Tests/Support/HttpAnswer.h"
#include "Tests/Support/TlsIdentity.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <list>
#include <map>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace tests {
namespace {

constexpr std::chrono::seconds kPatience(10);

/// A socket at a free port of 127.0.0.1.
int boundSocket() {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (socket < 0 || ::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        throw std::runtime_error("no port of 127.0.0.1 can be had");
    return socket;
}

int portOf(int socket) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

std::string urlOf(const std::string& scheme, int port, const std::string& path) {
    return scheme + "://127.0.0.1:" + std::to_string(port) + path;
}

HttpReply notFound() {
    constexpr std::string_view text = "not found\n";
    return {.status = 404, .body = {text.begin(), text.end()}, .contentType = "text/plain"};
}

HttpReply fileReply(const std::string& path, HttpReply how) {
    std::ifstream file(path, std::ios::binary);
    if (!file || !std::filesystem::is_regular_file(path))
        return notFound();
    how.body.assign(std::istreambuf_iterator<char>(file), {});
    return how;
}

/// A connection and the thread that answers it.
struct Client {
    Client(int socket, ssl_ctx_st* tls) : connection(std::in_place, socket, tls) {}

    std::optional<HttpConnection> connection; // until its thread has done with it
    bool isStalled = false;
    std::thread thread;
};

} // namespace

struct HttpServer::Listener {
    using Answer = std::function<HttpReply(const std::string& path)>;

    explicit Listener(ssl_ctx_st* tlsContext) : socket(boundSocket()), tls(tlsContext) {
        if (::listen(socket, SOMAXCONN) != 0)
            throw std::runtime_error("cannot listen on 127.0.0.1");
        thread = std::thread([this] { accept(); });
    }
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    void accept();
    void answer(Client& client, int number);
    [[nodiscard]] HttpReply replyTo(const HttpRequest& request) const;
    [[nodiscard]] bool stall(Client& client);
    [[nodiscard]] int countOpen() const;
    [[nodiscard]] int countStalled() const;

    const int socket;
    ssl_ctx_st* const tls;
    std::thread thread;
    mutable std::mutex mutex; // guards everything below
    mutable std::condition_variable changed;
    std::map<std::string, Answer> paths;
    std::map<std::string, Answer> folders;
    std::vector<HttpRequest> requests;
    std::list<Client> clients; // all there ever were
    bool ends = false;
};

HttpServer::Listener::~Listener() {
    {
        const std::scoped_lock lock(mutex);
        ends = true;
        for (const Client& client : clients) {
            if (client.connection)
                client.connection->hangUp();
        }
    }
    ::shutdown(socket, SHUT_RDWR);
    thread.join();
    for (Client& client : clients)
        client.thread.join();
    ::close(socket);
}

void HttpServer::Listener::accept() {
    for (;;) {
        const int accepted = ::accept4(socket, nullptr, nullptr, SOCK_CLOEXEC);
        const std::scoped_lock lock(mutex);
        if (accepted < 0)
            return;
        if (ends) {
            ::close(accepted);
            return;
        }
        // A reply goes out in several writes, which must not wait for each other's receipt.
        const int on = 1;
        ::setsockopt(accepted, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        Client& client = clients.emplace_back(accepted, tls);
        client.thread = std::thread(
            [this, &client, number = static_cast<int>(clients.size())] { answer(client, number); });
        changed.notify_all();
    }
}

void HttpServer::Listener::answer(Client& client, int number) {
    bool goesOn = true;
    while (goesOn) {
        auto request = client.connection->readRequest();
        if (!request)
            break;
        request->connection = number;
        const HttpReply reply = replyTo(*request);
        {
            const std::scoped_lock lock(mutex);
            requests.push_back(*request);
        }
        goesOn =
            HttpAnswer(*client.connection, *request, reply, [&] { return stall(client); }).send();
    }
    const std::scoped_lock lock(mutex);
    client.connection.reset();
    changed.notify_all();
}

HttpReply HttpServer::Listener::replyTo(const HttpRequest& request) const {
    if (request.method != "GET" && request.method != "HEAD")
        return {.status = 405};
    const std::string path = request.target.substr(0, request.target.find('?'));
    Answer found;
    {
        const std::scoped_lock lock(mutex);
        for (const std::string& key : {request.target, path}) {
            if (const auto entry = paths.find(key); !found && entry != paths.end())
                found = entry->second;
        }
        // From the end, so that a folder within another one comes first.
        for (auto entry = folders.rbegin(); !found && entry != folders.rend(); ++entry) {
            if (path.starts_with(entry->first))
                found = entry->second;
        }
    }
    return found ? found(path) : notFound();
}

bool HttpServer::Listener::stall(Client& client) {
    {
        const std::scoped_lock lock(mutex);
        client.isStalled = true;
    }
    changed.notify_all();
    const bool resumed = client.connection->wait(std::nullopt) == HttpConnection::Wait::Resumed;
    const std::scoped_lock lock(mutex);
    client.isStalled = false;
    return resumed;
}

int HttpServer::Listener::countOpen() const {
    return static_cast<int>(std::count_if(clients.begin(), clients.end(), [](const Client& client) {
        return client.connection.has_value();
    }));
}

int HttpServer::Listener::countStalled() const {
    return static_cast<int>(std::count_if(clients.begin(), clients.end(),
                                          [](const Client& client) { return client.isStalled; }));
}

HttpServer::HttpServer(Transport transport)
    : identity_(transport == Transport::Tls ? std::make_unique<TlsIdentity>() : nullptr),
      listener_(std::make_unique<Listener>(identity_ ? identity_->context() : nullptr)) {}

HttpServer::~HttpServer() = default;

int HttpServer::port() const {
    return portOf(listener_->socket);
}

std::string HttpServer::url(const std::string& path) const {
    return urlOf(identity_ ? "https" : "http", port(), path);
}

std::string HttpServer::certificateFile() const {
    return identity_ ? identity_->certificateFile() : std::string();
}

void HttpServer::serve(const std::string& path, HttpReply reply) {
    const std::scoped_lock lock(listener_->mutex);
    listener_->paths[path] = [reply = std::move(reply)](const std::string&) { return reply; };
}

void HttpServer::serveFile(const std::string& path, const std::string& file, HttpReply how) {
    const std::scoped_lock lock(listener_->mutex);
    listener_->paths[path] = [file, how = std::move(how)](const std::string&) {
        return fileReply(file, how);
    };
}

void HttpServer::serveFolder(const std::string& prefix, const std::string& folder, HttpReply how) {
    const std::scoped_lock lock(listener_->mutex);
    listener_->folders[prefix] = [prefix, folder, how = std::move(how)](const std::string& path) {
        const auto url = platform::URL::URLWithString("http:" + path.substr(prefix.size()));
        const bool isBelow = url && url->path().find("..") == std::string::npos;
        return isBelow ? fileReply(folder + "/" + url->path(), how) : notFound();
    };
}

void HttpServer::release() {
    const std::scoped_lock lock(listener_->mutex);
    for (Client& client : listener_->clients) {
        if (std::exchange(client.isStalled, false))
            client.connection->resume();
    }
}

bool HttpServer::waitUntilStalled(int count) const {
    std::unique_lock lock(listener_->mutex);
    return listener_->changed.wait_for(lock, kPatience,
                                       [&] { return listener_->countStalled() == count; });
}

std::vector<HttpRequest> HttpServer::requests() const {
    const std::scoped_lock lock(listener_->mutex);
    return listener_->requests;
}

int HttpServer::connections() const {
    const std::scoped_lock lock(listener_->mutex);
    return static_cast<int>(listener_->clients.size());
}

int HttpServer::openConnections() const {
    const std::scoped_lock lock(listener_->mutex);
    return listener_->countOpen();
}

bool HttpServer::waitForOpenConnections(int count) const {
    std::unique_lock lock(listener_->mutex);
    return listener_->changed.wait_for(lock, kPatience,
                                       [&] { return listener_->countOpen() == count; });
}

EmptyPort::EmptyPort() : socket_(boundSocket()) {}

EmptyPort::~EmptyPort() {
    ::close(socket_);
}

std::string EmptyPort::url(const std::string& scheme, const std::string& path) const {
    return urlOf(scheme, portOf(socket_), path);
}

std::string RefusingPort::url(const std::string& path) const {
    return EmptyPort::url("http", path);
}

SilentPort::SilentPort() {
    if (::listen(socket_, SOMAXCONN) != 0)
        throw std::runtime_error("cannot listen on 127.0.0.1");
}

} // namespace tests
