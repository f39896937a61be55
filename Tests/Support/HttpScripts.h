#pragma once

#include "Tests/Support/HttpConnection.h"

#include <chrono>
#include <functional>
#include <string>

/// What a server may say that means harm, for the `script` of a reply.
namespace tests {

using HttpScript = std::function<void(HttpConnection&)>;

/// Says it and closes the connection.
[[nodiscard]] HttpScript saying(std::string text);

/// Says it and waits until the client has gone.
[[nodiscard]] HttpScript sayingAndWaiting(std::string text);

/// Says it and resets the connection once the client has had it.
[[nodiscard]] HttpScript sayingAndResetting(std::string text);

/// Says the one, and then the other again and again until the client has gone.
[[nodiscard]] HttpScript sayingForEver(std::string first, std::string again);

/// Says the one at once and the other byte by byte, from its beginning again at its end, until the
/// client has gone.
[[nodiscard]] HttpScript dripping(std::string first, std::string again,
                                  std::chrono::milliseconds pause = std::chrono::milliseconds(1));

/// A status line, the lines of a head, the empty one, and the body.
[[nodiscard]] std::string httpAnswer(const std::string& headers, const std::string& body = {},
                                     const std::string& status = "200 OK");

} // namespace tests
