#include "Tests/Support/HttpConnection.h"

#include <openssl/ssl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <sstream>

namespace tests {
namespace {

constexpr std::size_t kLongestHead = 65536;

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::optional<HttpRequest> parsed(const std::string& head) {
    std::istringstream lines(head);
    HttpRequest request;
    std::string version;
    if (!(lines >> request.method >> request.target >> version) || !version.starts_with("HTTP/1."))
        return std::nullopt;
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        const auto colon = line.find(':');
        if (colon == std::string::npos)
            continue;
        const auto begin = line.find_first_not_of(' ', colon + 1);
        const auto end = line.find_last_not_of("\r ");
        if (begin != std::string::npos && end >= begin)
            request.headers[lowered(line.substr(0, colon))] = line.substr(begin, end + 1 - begin);
    }
    return request;
}

} // namespace

std::string HttpRequest::header(const std::string& name) const {
    const auto found = headers.find(name);
    return found == headers.end() ? std::string() : found->second;
}

HttpConnection::HttpConnection(int socket, ssl_ctx_st* tls)
    : socket_(socket), wakeUp_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (tls == nullptr)
        return;
    tls_ = SSL_new(tls);
    SSL_set_fd(tls_, socket_);
    SSL_set_accept_state(tls_); // the first read shakes hands
}

HttpConnection::~HttpConnection() {
    SSL_free(tls_);
    ::close(wakeUp_);
    ::close(socket_);
}

long HttpConnection::receive(char* bytes, std::size_t size) {
    return tls_ == nullptr ? ::recv(socket_, bytes, size, 0)
                           : SSL_read(tls_, bytes, static_cast<int>(size));
}

std::optional<HttpRequest> HttpConnection::readRequest() {
    const auto head = readHead();
    return head ? parsed(*head) : std::nullopt;
}

std::optional<std::string> HttpConnection::readHead() {
    std::array<char, 4096> piece{};
    for (;;) {
        if (!received_.empty() && std::isupper(static_cast<unsigned char>(received_[0])) == 0)
            return std::nullopt;
        if (const auto end = received_.find("\r\n\r\n"); end != std::string::npos) {
            std::string head = received_.substr(0, end + 2);
            received_.erase(0, end + 4);
            return head;
        }
        const auto count = receive(piece.data(), piece.size());
        if (count <= 0 || received_.size() > kLongestHead)
            return std::nullopt;
        received_.append(piece.data(), static_cast<std::size_t>(count));
    }
}

bool HttpConnection::send(std::string_view bytes) {
    while (!bytes.empty()) {
        const long count = tls_ == nullptr
                               ? ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL)
                               : SSL_write(tls_, bytes.data(), static_cast<int>(bytes.size()));
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

HttpConnection::Wait HttpConnection::wait(std::optional<std::chrono::milliseconds> limit) {
    std::array<pollfd, 2> watched{pollfd{socket_, POLLRDHUP, 0}, pollfd{wakeUp_, POLLIN, 0}};
    const int timeout = limit ? static_cast<int>(limit->count()) : -1;
    if (::poll(watched.data(), watched.size(), timeout) <= 0)
        return Wait::TimedOut;
    if (watched[0].revents != 0)
        return Wait::Gone;
    std::uint64_t times = 0;
    (void)!::read(wakeUp_, &times, sizeof times);
    return Wait::Resumed;
}

void HttpConnection::resume() const {
    const std::uint64_t once = 1;
    (void)!::write(wakeUp_, &once, sizeof once);
}

void HttpConnection::hangUp() const {
    ::shutdown(socket_, SHUT_RDWR);
}

void HttpConnection::resetAtEnd() const {
    const linger atOnce{1, 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

} // namespace tests
