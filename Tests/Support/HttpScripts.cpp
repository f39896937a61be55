#include "Tests/Support/HttpScripts.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace tests {

HttpScript saying(std::string text) {
    return [text = std::move(text)](HttpConnection& out) { (void)out.send(text); };
}

HttpScript sayingAndWaiting(std::string text) {
    return [text = std::move(text)](HttpConnection& out) {
        if (out.send(text))
            (void)out.wait(std::nullopt);
    };
}

HttpScript sayingAndResetting(std::string text) {
    return [text = std::move(text)](HttpConnection& out) {
        // What is on its way when a connection is reset may be lost.
        constexpr std::chrono::milliseconds kWay(50);
        if (out.send(text) && !text.empty())
            (void)out.wait(kWay);
        out.resetAtEnd();
    };
}

HttpScript sayingForEver(std::string first, std::string again) {
    return [first = std::move(first), again = std::move(again)](HttpConnection& out) {
        std::string much = again;
        while (much.size() < 16384)
            much += again;
        bool isThere = out.send(first);
        while (isThere)
            isThere = out.send(much);
    };
}

HttpScript dripping(std::string first, std::string again, std::chrono::milliseconds pause) {
    return [=](HttpConnection& out) {
        bool isThere = out.send(first);
        for (std::size_t at = 0; isThere; at = (at + 1) % again.size())
            isThere = out.send(std::string_view(again).substr(at, 1)) &&
                      out.wait(pause) == HttpConnection::Wait::TimedOut;
    };
}

std::string httpAnswer(const std::string& headers, const std::string& body,
                       const std::string& status) {
    return "HTTP/1.1 " + status + "\r\n" + headers + "\r\n" + body;
}

} // namespace tests
