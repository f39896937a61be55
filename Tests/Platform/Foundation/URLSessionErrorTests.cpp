#include "Tests/Platform/Foundation/DownloadScene.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

using platform::ErrorCode;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using tests::HttpReply;

namespace {

class FailedDownload : public DownloadScene {
protected:
    void expectFailure(const std::string& url, ErrorCode code,
                       const testing::Matcher<std::string>& why) {
        const Outcome outcome = fetch(url);
        EXPECT_FALSE(outcome.data) << url;
        ASSERT_TRUE(outcome.error) << url;
        EXPECT_EQ(outcome.error->code, code) << url;
        EXPECT_THAT(outcome.error->detail, why) << url;
        EXPECT_FALSE(outcome.wasInsideResume) << url;
    }
    [[nodiscard]] std::string host() const {
        return "\"127.0.0.1:" + std::to_string(server_.port()) + "\"";
    }
};

} // namespace

TEST_F(FailedDownload, NamesAHostThatIsNotFound) {
    // A label of 64 letters is not valid, so no name server is asked for it.
    const std::string name = std::string(64, 'a') + ".invalid";
    expectFailure("http://" + name + "/a", ErrorCode::Missing,
                  "the host \"" + name + "\" is not found");
}

TEST_F(FailedDownload, SaysThatAConnectionIsRefused) {
    const tests::RefusingPort port;
    expectFailure(port.url("/a"), ErrorCode::Unreadable,
                  AllOf(StartsWith("\"127.0.0.1:"), EndsWith("\" refuses the connection")));
}

TEST_F(FailedDownload, SaysThatItIsTooLargeFromTheLengthThatIsTold) {
    session_->setLimits({.maxBytes = 1000});
    server_.serve("/a", {.body = bytesOf("short"), .toldLength = 1001, .stallAfter = 2});
    expectFailure(server_.url("/a"), ErrorCode::TooLarge,
                  "it is too large (the limit is 1000 bytes)");
}

TEST_F(FailedDownload, StopsABodyThatIsLongerThanTheLimit) {
    session_->setLimits({.maxBytes = 1000});
    server_.serve("/chunks", {.body = std::vector<std::uint8_t>(1001),
                              .framing = HttpReply::Framing::Chunked});
    server_.serve("/endless", {.body = bytesOf("again"), .isEndless = true});
    for (const char* path : {"/chunks", "/endless"})
        expectFailure(server_.url(path), ErrorCode::TooLarge,
                      "it is too large (the limit is 1000 bytes)");
    session_.reset();
    EXPECT_TRUE(server_.waitForOpenConnections(0));
}

TEST_F(FailedDownload, StopsAFileThatIsLongerThanTheLimit) {
    session_->setLimits({.maxBytes = 4});
    const tests::TemporaryFolder folder;
    const auto url = platform::URL::fileURLWithPath(folder.add("a", bytesOf("hello")));
    expectFailure(url.absoluteString(), ErrorCode::TooLarge,
                  "it is too large (the limit is 4 bytes)");
}

TEST_F(FailedDownload, StopsAfterTooManyRedirects) {
    for (int i = 0; i <= 10; ++i)
        server_.serve("/" + std::to_string(i), tests::redirectTo("/" + std::to_string(i + 1)));
    server_.serve("/11", {.body = bytesOf("too far")});
    expectFailure(server_.url("/0"), ErrorCode::Unreadable, "it is redirected more than 10 times");
    EXPECT_EQ(server_.requests().size(), 11U);
}

TEST_F(FailedDownload, LeavesARedirectThatLeadsBack) {
    server_.serve("/a", tests::redirectTo("/a"));
    expectFailure(server_.url("/a"), ErrorCode::Unreadable, "it is redirected more than 10 times");
}

TEST_F(FailedDownload, FollowsNoRedirectToAFileOrAnotherScheme) {
    const tests::TemporaryFolder folder;
    const auto file = platform::URL::fileURLWithPath(folder.add("a", bytesOf("secret")));
    server_.serve("/file", tests::redirectTo(file.absoluteString()));
    server_.serve("/ftp", tests::redirectTo("ftp://127.0.0.1/a"));
    expectFailure(server_.url("/file"), ErrorCode::Unsupported,
                  "it is redirected to the scheme \"file\", which is neither http nor https");
    expectFailure(server_.url("/ftp"), ErrorCode::Unsupported,
                  "it is redirected to the scheme \"ftp\", which is neither http nor https");
}

TEST_F(FailedDownload, NamesASchemeThatIsNotSupported) {
    expectFailure("ftp://127.0.0.1/a", ErrorCode::Unsupported,
                  "the scheme \"ftp\" is not supported");
    expectFailure("data:text/plain,a", ErrorCode::Unsupported,
                  "the scheme \"data\" is not supported");
}

TEST_F(FailedDownload, SaysThatAnAddressIsMalformed) {
    expectFailure("http://", ErrorCode::Unsupported, "the address is malformed");
    expectFailure("http://127.0.0.1:99999/", ErrorCode::Unsupported, "the address is malformed");
}

TEST_F(FailedDownload, SaysWhereItWasCutShort) {
    server_.serve("/length", {.body = bytesOf("hello"), .cutAfter = 3});
    server_.serve(
        "/chunks",
        {.body = bytesOf("hello"), .framing = HttpReply::Framing::Chunked, .cutAfter = 3});
    server_.serve("/told", {.body = bytesOf("hel"), .toldLength = 5});
    for (const char* path : {"/length", "/chunks", "/told"})
        expectFailure(server_.url(path), ErrorCode::Unreadable,
                      "the connection was cut short after 3 bytes");
}

TEST_F(FailedDownload, TakesNoMoreThanTheLengthThatIsTold) {
    server_.serve("/a", {.body = bytesOf("hello"), .toldLength = 3});
    EXPECT_EQ(fetch(server_.url("/a")).text(), "hel");
}

TEST_F(FailedDownload, TimesOutWithoutAConnection) {
    session_->setLimits({.connectTime = std::chrono::milliseconds(200)});
    const tests::SilentPort port;
    // A connection stands only once it is encrypted.
    expectFailure(
        port.url("https", "/a"), ErrorCode::Unreadable,
        AllOf(StartsWith("\"127.0.0.1:"), EndsWith("\" timed out: no connection within 0.2 s")));
}

TEST_F(FailedDownload, TimesOutWithoutAConnectionToWhereItIsRedirected) {
    session_->setLimits({.connectTime = std::chrono::milliseconds(200)});
    const tests::SilentPort port;
    server_.serve("/a", tests::redirectTo(port.url("https", "/a")));
    expectFailure(server_.url("/a"), ErrorCode::Unreadable,
                  EndsWith("\" timed out: no connection within 0.2 s"));
}

TEST_F(FailedDownload, TimesOutWhenNothingComes) {
    session_->setLimits({.stallTime = std::chrono::milliseconds(200)});
    server_.serve("/silent", {.body = bytesOf("hello"), .isSilent = true});
    server_.serve("/stalled", {.body = bytesOf("hello"), .stallAfter = 2});
    for (const char* path : {"/silent", "/stalled"})
        expectFailure(server_.url(path), ErrorCode::Unreadable,
                      host() + " timed out: nothing came for 0.2 s");
    EXPECT_TRUE(server_.waitForOpenConnections(0));
}

TEST_F(FailedDownload, SaysThatAFileIsMissingOrIsNone) {
    const tests::TemporaryFolder folder;
    const auto urlOfFile = [&](const std::string& name) {
        return platform::URL::fileURLWithPath(folder.pathOf(name)).absoluteString();
    };
    ASSERT_EQ(::mkfifo(folder.pathOf("pipe").c_str(), 0600), 0);
    expectFailure(urlOfFile("none"), ErrorCode::Missing, StartsWith("it is missing ("));
    expectFailure(urlOfFile(""), ErrorCode::Unreadable, "it is a directory");
    expectFailure(urlOfFile("pipe"), ErrorCode::Unreadable, "it is not a regular file");
    expectFailure("file:///dev/zero", ErrorCode::Unreadable, "it is not a regular file");
}

TEST_F(FailedDownload, IsFollowedByOneThatSucceeds) {
    server_.serve("/cut", {.body = bytesOf("hello"), .cutAfter = 0});
    server_.serve("/a", {.body = bytesOf("hello")});
    expectFailure(server_.url("/cut"), ErrorCode::Unreadable, HasSubstr("cut short after 0 bytes"));
    EXPECT_EQ(fetch(server_.url("/a")).text(), "hello");
}

TEST_F(FailedDownload, RefusesACertificateThatNobodyTrusts) {
    tests::HttpServer server(tests::HttpServer::Transport::Tls);
    server.serve("/a", {.body = bytesOf("secret")});
    expectFailure(
        server.url("/a"), ErrorCode::Unreadable,
        AllOf(StartsWith("the certificate of \"127.0.0.1:"), EndsWith("\" is not trusted")));
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(FailedDownload, RefusesACertificateOfAnotherHost) {
    tests::HttpServer server(tests::HttpServer::Transport::Tls);
    session_->setLimits({.certificateFile = server.certificateFile()});
    const std::string port = std::to_string(server.port());
    expectFailure("https://localhost:" + port + "/a", ErrorCode::Unreadable,
                  "the certificate of \"localhost:" + port + "\" is not trusted");
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(FailedDownload, RefusesCertificatesThatCannotBeRead) {
    tests::HttpServer server(tests::HttpServer::Transport::Tls);
    session_->setLimits({.certificateFile = "/no/such/file.pem"});
    expectFailure(server.url("/a"), ErrorCode::Unavailable,
                  "the trusted certificates cannot be read");
}

TEST_F(FailedDownload, SaysThatNoSecureConnectionCanBeMade) {
    const std::string secure = "https" + server_.url("/a").substr(4);
    expectFailure(secure, ErrorCode::Unreadable,
                  "no secure connection to " + host() + " can be made");
}
