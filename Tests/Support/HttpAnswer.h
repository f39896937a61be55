#pragma once

#include "Tests/Support/HttpConnection.h"
#include "Tests/Support/HttpReply.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tests {

/// One reply on its way through a connection.
///
/// Thread: that of the connection.
class HttpAnswer {
public:
    /// `stall` comes back once the reply is released; false: it never will be.
    HttpAnswer(HttpConnection& connection, const HttpRequest& request, const HttpReply& reply,
               std::function<bool()> stall);

    /// Whether the connection goes on to another request.
    [[nodiscard]] bool send();

private:
    void chooseRange();
    [[nodiscard]] std::string head() const;
    [[nodiscard]] bool sendBody();
    /// How much goes out in one piece, which never steps over the place of a stall or a cut.
    [[nodiscard]] std::size_t nextPiece(std::size_t sent) const;
    [[nodiscard]] bool sendPiece(std::string_view piece);
    [[nodiscard]] bool endsConnection() const;

    HttpConnection& connection_;
    const HttpRequest& request_;
    const HttpReply& reply_;
    std::function<bool()> stall_;
    HttpReply::Framing framing_;
    int status_;
    std::size_t begin_ = 0;
    std::size_t length_;
};

} // namespace tests
