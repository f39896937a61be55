#include "Tests/Support/HttpServer.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using tests::HttpReply;
using tests::HttpServer;

namespace {

std::vector<std::uint8_t> bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

/// The plainest client: what is sent is written here, and what comes is read as it is.
class Client {
public:
    explicit Client(int port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        const timeval patience{10, 0};
        ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        isConnected_ =
            ::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    ~Client() { ::close(socket_); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    [[nodiscard]] bool isConnected() const { return isConnected_; }

    void ask(const std::string& path, const std::string& headers = {},
             const std::string& method = "GET") const {
        const std::string text = method + " " + path + " HTTP/1.1\r\nHost: here\r\n" + headers;
        EXPECT_GT(::send(socket_, (text + "\r\n").data(), text.size() + 2, MSG_NOSIGNAL), 0);
    }

    /// What comes until it ends with `end`, or until the server closes.
    std::string readUntil(const std::string& end) const {
        std::string text;
        std::array<char, 4096> piece{};
        while (end.empty() || !text.ends_with(end)) {
            const auto count = ::recv(socket_, piece.data(), piece.size(), 0);
            if (count <= 0)
                break;
            text.append(piece.data(), static_cast<std::size_t>(count));
        }
        return text;
    }
    std::string readAll() const { return readUntil({}); }

private:
    int socket_;
    bool isConnected_ = false;
};

const std::string kOnce = "Connection: close\r\n";

std::string replyFrom(const HttpServer& server, const std::string& path,
                      const std::string& headers = {}, const std::string& method = "GET") {
    const Client client(server.port());
    client.ask(path, headers + kOnce, method);
    return client.readAll();
}

std::string bodyOf(const std::string& reply) {
    return reply.substr(reply.find("\r\n\r\n") + 4);
}

} // namespace

TEST(HttpServer, ServesBytesWithTheirLengthAndType) {
    HttpServer server;
    server.serve("/a.png", {.body = bytesOf("hello")});
    EXPECT_EQ(replyFrom(server, "/a.png"),
              "HTTP/1.1 200 OK\r\nContent-Type: image/png\r\nContent-Length: 5\r\n"
              "Accept-Ranges: bytes\r\nConnection: close\r\n\r\nhello");
}

TEST(HttpServer, AnswersWhatItDoesNotHave) {
    const HttpServer server;
    EXPECT_THAT(replyFrom(server, "/a"), StartsWith("HTTP/1.1 404 "));
    EXPECT_THAT(replyFrom(server, "/a", {}, "PUT"), StartsWith("HTTP/1.1 405 "));
}

TEST(HttpServer, SendsAnyStatusWithItsBodyAndHeaders) {
    HttpServer server;
    server.serve("/a", {.status = 500, .body = bytesOf("oh"), .headers = {{"X-Why", "because"}}});
    server.serve("/b", tests::redirectTo("/c", 307));
    EXPECT_THAT(replyFrom(server, "/a"),
                testing::AllOf(StartsWith("HTTP/1.1 500 "), HasSubstr("X-Why: because\r\n"),
                               EndsWith("\r\n\r\noh")));
    EXPECT_THAT(replyFrom(server, "/b"),
                testing::AllOf(StartsWith("HTTP/1.1 307 "), HasSubstr("Location: /c\r\n")));
}

TEST(HttpServer, AnswersHeadWithoutTheBody) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("hello")});
    EXPECT_THAT(replyFrom(server, "/a", {}, "HEAD"),
                testing::AllOf(HasSubstr("Content-Length: 5\r\n"), EndsWith("\r\n\r\n")));
}

TEST(HttpServer, SendsTheRangeThatIsAskedFor) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("0123456789")});
    const auto part = [&](const std::string& range) {
        return replyFrom(server, "/a", "Range: bytes=" + range + "\r\n");
    };
    EXPECT_THAT(part("2-4"), testing::AllOf(StartsWith("HTTP/1.1 206 "),
                                            HasSubstr("Content-Range: bytes 2-4/10\r\n"),
                                            HasSubstr("Content-Length: 3\r\n")));
    EXPECT_EQ(bodyOf(part("2-4")), "234");
    EXPECT_EQ(bodyOf(part("7-")), "789");
    EXPECT_EQ(bodyOf(part("-2")), "89");
    EXPECT_EQ(bodyOf(part("8-99")), "89");
    EXPECT_EQ(bodyOf(part("0-0")), "0");
}

TEST(HttpServer, RefusesARangeBeyondTheEnd) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("0123456789")});
    EXPECT_THAT(replyFrom(server, "/a", "Range: bytes=10-\r\n"),
                testing::AllOf(StartsWith("HTTP/1.1 416 "), HasSubstr("bytes */10\r\n")));
}

TEST(HttpServer, SendsTheWholeWhenItTakesNoRanges) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("0123456789"), .takesRanges = false});
    EXPECT_THAT(replyFrom(server, "/a", "Range: bytes=2-4\r\n"),
                testing::AllOf(StartsWith("HTTP/1.1 200 "), EndsWith("\r\n0123456789"),
                               Not(HasSubstr("Accept-Ranges"))));
}

TEST(HttpServer, SendsWithoutALengthInChunksOrUntilItCloses) {
    HttpServer server;
    server.serve(
        "/chunks",
        {.body = bytesOf("hello"), .framing = HttpReply::Framing::Chunked, .dripBytes = 3});
    server.serve("/close", {.body = bytesOf("hello"), .framing = HttpReply::Framing::UntilClose});
    EXPECT_THAT(replyFrom(server, "/chunks"),
                testing::AllOf(Not(HasSubstr("Content-Length")),
                               EndsWith("\r\n\r\n3\r\nhel\r\n2\r\nlo\r\n0\r\n\r\n")));
    EXPECT_THAT(replyFrom(server, "/close"),
                testing::AllOf(Not(HasSubstr("Content-Length")), EndsWith("\r\n\r\nhello")));
}

TEST(HttpServer, TellsALengthThatIsWrongAndCloses) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("hello"), .toldLength = 99});
    const Client client(server.port());
    client.ask("/a");
    EXPECT_THAT(client.readAll(),
                testing::AllOf(HasSubstr("Content-Length: 99\r\n"), EndsWith("\r\nhello")));
}

TEST(HttpServer, CutsAReply) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("hello"), .cutAfter = 2});
    const Client client(server.port());
    client.ask("/a");
    EXPECT_THAT(client.readAll(),
                testing::AllOf(HasSubstr("Content-Length: 5\r\n"), EndsWith("\r\n\r\nhe")));
}

TEST(HttpServer, StallsUntilItIsReleased) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("hello"), .stallAfter = 2});
    const Client client(server.port());
    client.ask("/a", kOnce);
    EXPECT_THAT(client.readUntil("he"), EndsWith("\r\n\r\nhe"));
    ASSERT_TRUE(server.waitUntilStalled());
    server.release();
    EXPECT_EQ(client.readAll(), "llo");
    EXPECT_TRUE(server.waitUntilStalled(0));
}

TEST(HttpServer, SaysNothingUntilItIsReleased) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("hello"), .isSilent = true});
    const Client client(server.port());
    client.ask("/a", kOnce);
    ASSERT_TRUE(server.waitUntilStalled());
    server.release();
    EXPECT_THAT(client.readAll(), StartsWith("HTTP/1.1 200 "));
}

TEST(HttpServer, NoticesThatAClientLeavesAStall) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("hello"), .stallAfter = 0});
    {
        const Client client(server.port());
        client.ask("/a");
        ASSERT_TRUE(server.waitUntilStalled());
        EXPECT_EQ(server.openConnections(), 1);
    }
    EXPECT_TRUE(server.waitForOpenConnections(0));
}

TEST(HttpServer, EndsWhileARequestStallsAndAnotherIsAwaited) {
    auto server = std::make_unique<HttpServer>();
    server->serve("/a", {.body = bytesOf("hello"), .stallAfter = 0});
    const Client stalled(server->port());
    const Client idle(server->port());
    stalled.ask("/a");
    ASSERT_TRUE(server->waitUntilStalled());
    ASSERT_TRUE(server->waitForOpenConnections(2));
    server.reset();
    EXPECT_THAT(idle.readAll(), IsEmpty());
}

TEST(HttpServer, SendsWithoutEndUntilTheClientLeaves) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("0123456789"), .isEndless = true});
    {
        const Client client(server.port());
        client.ask("/a");
        std::string text;
        while (text.size() < 1'000'000)
            text += client.readUntil("9");
        EXPECT_THAT(text, Not(HasSubstr("Content-Length")));
    }
    EXPECT_TRUE(server.waitForOpenConnections(0));
}

TEST(HttpServer, LeavesAClientThatSpeaksSomethingElse) {
    const HttpServer server;
    const Client client(server.port());
    client.ask("/a", {}, "\x16");
    EXPECT_THAT(client.readAll(), IsEmpty());
}

TEST(HttpServer, SaysWhatAScriptSaysAndCloses) {
    HttpServer server;
    server.serve("/a", {.script = [](tests::HttpConnection& out) { (void)out.send("anything"); }});
    EXPECT_EQ(replyFrom(server, "/a"), "anything");
    EXPECT_TRUE(server.waitForOpenConnections(0));
}

TEST(HttpServer, ResetsAConnection) {
    HttpServer server;
    server.serve("/a", {.script = [](tests::HttpConnection& out) { out.resetAtEnd(); }});
    const Client client(server.port());
    client.ask("/a");
    const std::string text = client.readAll();
    const int cause = errno;
    EXPECT_EQ(cause, ECONNRESET) << text;
}

TEST(HttpServer, KeepsAConnectionForTheNextRequest) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("one")});
    server.serve("/b", {.body = bytesOf("two")});
    const Client client(server.port());
    client.ask("/a");
    EXPECT_THAT(client.readUntil("one"), EndsWith("one"));
    client.ask("/b");
    EXPECT_THAT(client.readUntil("two"), EndsWith("two"));
    EXPECT_EQ(server.connections(), 1);
    ASSERT_THAT(server.requests(), SizeIs(2));
    EXPECT_EQ(server.requests()[1].connection, 1);
}

TEST(HttpServer, NotesWhatWasAsked) {
    HttpServer server;
    (void)replyFrom(server, "/a?x=1", "RANGE:  bytes=1-2 \r\n");
    ASSERT_THAT(server.requests(), SizeIs(1));
    const tests::HttpRequest request = server.requests()[0];
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.target, "/a?x=1");
    EXPECT_EQ(request.range(), "bytes=1-2");
    EXPECT_EQ(request.header("host"), "here");
    EXPECT_EQ(request.header("cookie"), "");
}

TEST(HttpServer, TellsQueriesApartWhereTheyAreServed) {
    HttpServer server;
    server.serve("/a", {.body = bytesOf("any")});
    server.serve("/a?1", {.body = bytesOf("one")});
    EXPECT_EQ(bodyOf(replyFrom(server, "/a?1")), "one");
    EXPECT_EQ(bodyOf(replyFrom(server, "/a?2")), "any");
}

TEST(HttpServer, ServesAFileAsItIsAtTheRequest) {
    const tests::TemporaryFolder folder;
    HttpServer server;
    server.serveFile("/a", folder.pathOf("file"));
    EXPECT_THAT(replyFrom(server, "/a"), StartsWith("HTTP/1.1 404 "));
    folder.add("file", bytesOf("now"));
    EXPECT_EQ(bodyOf(replyFrom(server, "/a")), "now");
}

TEST(HttpServer, ServesAFolderButNothingOutsideIt) {
    const tests::TemporaryFolder folder;
    folder.add("secret", bytesOf("no"));
    std::filesystem::create_directory(folder.pathOf("open"));
    folder.add("open/a b.m3u8", bytesOf("yes"));
    HttpServer server;
    server.serveFolder("/files/", folder.pathOf("open"));
    EXPECT_THAT(
        replyFrom(server, "/files/a%20b.m3u8"),
        testing::AllOf(HasSubstr("application/vnd.apple.mpegurl"), EndsWith("\r\n\r\nyes")));
    for (const char* path : {"/files/", "/files/none", "/files/../secret", "/files/%2e%2e/secret"})
        EXPECT_THAT(replyFrom(server, path), StartsWith("HTTP/1.1 404 ")) << path;
}

TEST(HttpServer, AnswersSeveralClientsAtATime) {
    HttpServer server;
    server.serve("/slow", {.body = bytesOf("slow"), .stallAfter = 0});
    server.serve("/fast", {.body = bytesOf("fast")});
    const Client slow(server.port());
    slow.ask("/slow", kOnce);
    ASSERT_TRUE(server.waitUntilStalled());
    EXPECT_EQ(bodyOf(replyFrom(server, "/fast")), "fast");
    server.release();
    EXPECT_EQ(bodyOf(slow.readAll()), "slow");
}

TEST(RefusingPort, RefusesConnections) {
    const tests::RefusingPort port;
    const std::string url = port.url("/a");
    ASSERT_THAT(url, testing::AllOf(StartsWith("http://127.0.0.1:"), EndsWith("/a")));
    EXPECT_FALSE(Client(std::stoi(url.substr(url.rfind(':') + 1))).isConnected());
}

TEST(SilentPort, TakesConnections) {
    const tests::SilentPort port;
    const std::string url = port.url("https", "/");
    EXPECT_TRUE(Client(std::stoi(url.substr(url.rfind(':') + 1))).isConnected());
}
