#include "Tests/Platform/Foundation/DownloadScene.h"
#include "Tests/Support/HttpScripts.h"
#include "Tests/Support/MemoryPeak.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

using tests::dripping;
using tests::httpAnswer;
using tests::HttpConnection;
using tests::HttpScript;
using tests::saying;
using tests::sayingAndResetting;
using tests::sayingAndWaiting;
using tests::sayingForEver;

namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

/// What a server says, and what comes of it: "data: …" or the error's detail.
struct Harm {
    std::string name;
    HttpScript script;
    std::string outcome;
};

std::ostream& operator<<(std::ostream& out, const Harm& harm) {
    return out << harm.name;
}

std::string cutAfter(int bytes) {
    return "the connection was cut short after " + std::to_string(bytes) + " bytes";
}

const std::string kNotHTTP = "the answer is not HTTP";
const std::string kHugeHead = "the head of the answer is too large (the limit is 262144 bytes)";
const std::string kStalled = "timed out: nothing came for 0.3 s";
const std::string kNoChunks = "the chunks of the answer are damaged";
constexpr int kMaxBytes = 1'000'000;
const std::string kTooLarge = "it is too large (the limit is 1000000 bytes)";

std::vector<Harm> broken() {
    return {
        {"ClosesAtOnce", saying(""), cutAfter(0)},
        {"ResetsAtOnce", sayingAndResetting(""), cutAfter(0)},
        {"ClosesInTheStatusLine", saying("HTTP/1.1 2"), cutAfter(0)},
        {"ResetsInTheStatusLine", sayingAndResetting("HTTP/1.1 2"), cutAfter(0)},
        {"ClosesInTheHead", saying("HTTP/1.1 200 OK\r\nContent-Le"), cutAfter(0)},
        {"ClosesBeforeTheEmptyLine", saying("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n"),
         cutAfter(0)},
        {"ResetsInTheHead", sayingAndResetting("HTTP/1.1 200 OK\r\nContent-Le"), cutAfter(0)},
        {"ResetsInTheBody", sayingAndResetting(httpAnswer("Content-Length: 9\r\n", "hel")),
         cutAfter(3)},
        {"ResetsInABodyWithoutLength", sayingAndResetting(httpAnswer("", "hel")), cutAfter(3)},
        {"SpeaksSomethingElse", saying("SSH-2.0-Server\r\n"), kNotHTTP},
        {"SpeaksNoise", saying("\0\xff\x80\r\n\r\n\x01"s), kNotHTTP},
        {"SpeaksHTTPOfOldTimes", saying("<html>hello</html>"), kNotHTTP},
        {"SpeaksAnUnknownVersion", saying("HTTP/9.9 200 OK\r\n\r\nhello"), kNotHTTP},
        {"HasNoReason", saying("HTTP/1.1 200\r\nContent-Length: 2\r\n\r\nok"), "data: ok"},
        {"HasNoStatus", saying("HTTP/1.1 \r\nContent-Length: 2\r\n\r\nok"), kNotHTTP},
        {"HasAStatusOfLetters", saying("HTTP/1.1 abc OK\r\n\r\nok"), kNotHTTP},
        {"HasAStatusOfManyDigits", saying("HTTP/1.1 20000000000 OK\r\n\r\nok"), kNotHTTP},
        {"HasBareLineFeeds", saying("HTTP/1.1 200 OK\nContent-Length: 2\n\nok"), "data: ok"},
        {"HasNULInAHeader", saying(httpAnswer("X: a\0b\r\n"s, "ok")), kNotHTTP},
        {"HasControlsInAHeader", saying(httpAnswer("X: \x01\x1b[2J\x7f\x80\r\n", "ok")),
         "data: ok"},
        {"HasALineWithoutAName", saying(httpAnswer("no colon at all\r\n", "ok")), kNotHTTP},
        {"HasAFoldedHeader", saying(httpAnswer("X: a\r\n  b\r\n", "ok")), "data: ok"},
        {"SendsABodyWith204", saying(httpAnswer("Content-Length: 2\r\n", "no", "204 None")),
         "data: "},
        {"SendsABodyWith304", saying(httpAnswer("Content-Length: 2\r\n", "no", "304 Same")),
         "data: "},
        {"SendsAPartUnasked",
         saying(httpAnswer("Content-Range: bytes 5-6/9\r\nContent-Length: 2\r\n", "ok", "206 P")),
         "data: ok"},
        {"RefusesARangeUnasked",
         saying(httpAnswer("Content-Range: bytes */9\r\nContent-Length: 2\r\n", "no", "416 R")),
         "data: no"},
        {"SwitchesProtocols", saying(httpAnswer("Upgrade: x\r\n", "ok", "101 Switch")), "data: ok"},
        {"SaysContinueFirst", saying("HTTP/1.1 100 Continue\r\n\r\n" + httpAnswer("", "ok")),
         "data: ok"},
    };
}

std::vector<Harm> wrongLengths() {
    const auto told = [](const std::string& length) {
        return saying(httpAnswer("Content-Length: " + length + "\r\n", "hello"));
    };
    const auto chunks = [](const std::string& text) {
        return saying(httpAnswer("Transfer-Encoding: chunked\r\n", text));
    };
    return {
        {"TellsTooMuch", told("6"), cutAfter(5)},
        {"TellsTooLittle", told("3"), "data: hel"},
        {"TellsNothing", told("0"), "data: "},
        {"TellsFarTooMuch", told("1000001"), kTooLarge},
        {"TellsTheMost", told("9223372036854775807"), kTooLarge},
        {"TellsMoreThan64Bits", told("18446744073709551621"), "data: hello"},
        {"TellsMoreThan64BitsByFar", told(std::string(500, '9')), "data: hello"},
        {"TellsLessThanNothing", told("-1"), kNotHTTP},
        {"TellsNoNumber", told("many"), kNotHTTP},
        {"TellsHexadecimal", told("0x5"), "data: "},
        {"TellsTwoInOne", told("5, 3"), "data: hello"},
        {"TellsTwo", told("5\r\nContent-Length: 3"), "data: hel"},
        {"TellsTheSameTwice", told("5\r\nContent-Length: 5"), "data: hello"},
        {"TellsNoneAtAll", told(""), kNotHTTP},
        {"TellsALengthAndChunks",
         saying(httpAnswer("Content-Length: 3\r\nTransfer-Encoding: chunked\r\n",
                           "5\r\nhello\r\n0\r\n\r\n")),
         "data: hello"},
        {"HasAChunkOfNoNumber", chunks("5\r\nhello\r\nzz\r\n"), kNoChunks},
        {"HasAChunkBelowNothing", chunks("5\r\nhello\r\n-5\r\nhello\r\n"), kNoChunks},
        {"HasAChunkBeyond64Bits", chunks("5\r\nhello\r\n10000000000000005\r\nhello\r\n"),
         kNoChunks},
        {"HasAChunkOfTheMost", chunks("7fffffffffffffff\r\nhello"), cutAfter(5)},
        {"HasAChunkLongerThanTold", chunks("3\r\nhello\r\n0\r\n\r\n"), kNoChunks},
        {"HasAChunkWithoutASize", chunks("\r\nhello\r\n0\r\n\r\n"), kNoChunks},
        {"HasNoLastChunk", chunks("5\r\nhello\r\n"), cutAfter(5)},
        {"HasATrailer", chunks("5\r\nhello\r\n0\r\nX: y\r\n\r\n"), "data: hello"},
        {"IsCutInTheTrailer", chunks("5\r\nhello\r\n0\r\nX: y"), cutAfter(5)},
    };
}

std::vector<Harm> endless() {
    const std::string line = "X-More: " + std::string(100, 'a') + "\r\n";
    const std::string chunked = httpAnswer("Transfer-Encoding: chunked\r\n");
    return {
        {"HeaderLines", sayingForEver("HTTP/1.1 200 OK\r\n", line), kHugeHead},
        {"HeaderLine", sayingForEver("HTTP/1.1 200 OK\r\nX: ", "a"), kHugeHead},
        {"StatusLine", sayingForEver("HTTP/1.1 200 ", "a"), kHugeHead},
        {"Reply", sayingForEver("HTTP", "a"), kNotHTTP},
        {"EmptyHeaderLines", sayingForEver("HTTP/1.1 200 OK\r\n", "a:\r\n"), kHugeHead},
        {"Continues", sayingForEver("", "HTTP/1.1 100 Continue\r\n\r\n"), kHugeHead},
        {"EarlyHints", sayingForEver("", "HTTP/1.1 103 Early Hints\r\n" + line + "\r\n"),
         kHugeHead},
        {"Body", sayingForEver(httpAnswer(""), "again"), kTooLarge},
        {"Chunks", sayingForEver(chunked, "5\r\nagain\r\n"), kTooLarge},
        {"BodyOfAnError", sayingForEver(httpAnswer("", "", "500 No"), "again"), kTooLarge},
        {"ChunkSize", sayingForEver(chunked, "0"), kNoChunks},
        {"Trailer", sayingForEver(chunked + "0\r\n", line), kHugeHead},
        {"BodyOf204", sayingForEver(httpAnswer("", "", "204 None"), "again"), "data: "},
    };
}

/// More than was asked for, which is not to be taken for the answer to the next request.
std::vector<Harm> unasked() {
    const std::string evil = httpAnswer("Content-Length: 4\r\n", "evil");
    const auto after = [&](const std::string& answer) { return sayingAndWaiting(answer + evil); };
    // The connection may be kept here, but what came too much is dropped.
    const HttpScript afterChunks = [=](HttpConnection& out) {
        (void)out.send(httpAnswer("Transfer-Encoding: chunked\r\n", "2\r\nok\r\n0\r\n\r\n") + evil);
        if (out.readRequest())
            (void)out.send(httpAnswer("Content-Length: 4\r\n", "good"));
    };
    return {
        {"AfterABody", after(httpAnswer("Content-Length: 2\r\n", "ok")), "data: ok"},
        {"AfterNoBody", after(httpAnswer("Content-Length: 0\r\n")), "data: "},
        {"AfterChunks", afterChunks, "data: ok"},
        {"After204", after(httpAnswer("", "", "204 None")), "data: "},
        {"After304", after(httpAnswer("", "", "304 Same")), "data: "},
        {"AfterARedirect",
         after(httpAnswer("Location: /good\r\nContent-Length: 0\r\n", "", "302 There")),
         "data: good"},
    };
}

/// What comes, and is not looked at, does not count as life.
std::vector<Harm> idle() {
    const std::string chunked = httpAnswer("Transfer-Encoding: chunked\r\n");
    const std::string elsewhere = "Location: /good\r\nTransfer-Encoding: chunked\r\n";
    return {
        {"ChunkExtension", sayingForEver(chunked + "5;", "a"), kStalled},
        {"BodyOfARedirect", sayingForEver(httpAnswer(elsewhere, "", "302 There"), "1\r\na\r\n"),
         kStalled},
        {"DripInTheStatusLine", dripping("HTTP/1.1 200 ", "a"), kStalled},
        {"DripInAHeaderLine", dripping("HTTP/1.1 200 OK\r\nX: ", "a"), kStalled},
        {"DripInAChunkSize", dripping(chunked + "5;", "a"), kStalled},
    };
}

using HostileDownload = DownloadScene;

class HostileServer : public DownloadScene, public testing::WithParamInterface<Harm> {
protected:
    HostileServer() { session_->setLimits({.maxBytes = kMaxBytes}); }

    /// Heard once, with nothing left over, and the next download succeeds.
    void expectOutcome() {
        server_.serve("/harm", {.script = GetParam().script});
        server_.serve("/good", {.body = bytesOf("good")});
        const Outcome outcome = fetch(server_.url("/harm"));
        EXPECT_THAT(outcome.data ? "data: " + outcome.text() : outcome.why(),
                    testing::EndsWith(GetParam().outcome));
        EXPECT_EQ(outcome.calls, 1);
        const Outcome next = fetch(server_.url("/good"));
        EXPECT_EQ(next.text(), "good") << next.why();
        session_.reset();
        EXPECT_TRUE(server_.waitForOpenConnections(0));
    }
};

class IdlingServer : public HostileServer {
protected:
    IdlingServer() { session_->setLimits({.stallTime = 300ms}); }
};

INSTANTIATE_TEST_SUITE_P(Broken, HostileServer, testing::ValuesIn(broken()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(WrongLength, HostileServer, testing::ValuesIn(wrongLengths()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Endless, HostileServer, testing::ValuesIn(endless()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Unasked, HostileServer, testing::ValuesIn(unasked()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Endless, IdlingServer, testing::ValuesIn(idle()),
                         [](const auto& test) { return test.param.name; });

} // namespace

TEST_P(HostileServer, IsHeardOnceAndLeft) {
    expectOutcome();
}

TEST_P(IdlingServer, IsLeftWhenItStalls) {
    expectOutcome();
}

TEST_F(HostileDownload, AsksForNoEncodingAndUnpacksNone) {
    const std::string packed("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10);
    server_.serve("/a", {.body = bytesOf(packed), .headers = {{"Content-Encoding", "gzip"}}});
    EXPECT_EQ(fetch(server_.url("/a")).text(), packed);
    EXPECT_EQ(server_.requests().front().header("accept-encoding"), "");
    EXPECT_EQ(server_.requests().front().header("te"), "");
}

TEST_F(HostileDownload, KeepsNoCookies) {
    server_.serve("/a", {.headers = {{"Set-Cookie", "a=b; Path=/"}}});
    server_.serve("/there",
                  {.status = 302, .headers = {{"Set-Cookie", "c=d; Path=/"}, {"Location", "/a"}}});
    for (const char* path : {"/a", "/there", "/a"})
        EXPECT_TRUE(fetch(server_.url(path)).data) << path;
    for (const auto& request : server_.requests())
        EXPECT_EQ(request.header("cookie"), "") << request.target;
}

TEST_F(HostileDownload, BoundsTheHeadsOfAllRedirectsTogether) {
    const std::pair<std::string, std::string> much{"X", std::string(60'000, 'a')};
    for (int i = 0; i < 6; ++i)
        server_.serve(
            "/" + std::to_string(i),
            {.status = 302, .headers = {much, {"Location", "/" + std::to_string(i + 1)}}});
    EXPECT_EQ(fetch(server_.url("/0")).why(), kHugeHead);
}

TEST_F(HostileDownload, FollowsNoRedirectToWhereNothingCanBeHad) {
    const tests::RefusingPort port;
    const std::vector<std::pair<std::string, std::string>> places{
        {"data:text/plain,a", "a scheme that is neither http nor https"},
        {"javascript:alert(1)", "a scheme that is neither http nor https"},
        {"FILE:///etc/passwd", "the scheme \"file\""},
        {"gopher://127.0.0.1/a", "the scheme \"gopher\""},
        {"http://", "the address is malformed"},
        {"http://127.0.0.1:0x50/", "the address is malformed"},
        {"http://127.0.0.1:99999/", "the address is malformed"},
        {port.url("/a"), "refuses the connection"},
        {"//" + port.url("/a").substr(7), "refuses the connection"},
    };
    for (const auto& [place, why] : places) {
        server_.serve("/a", tests::redirectTo(place));
        EXPECT_THAT(fetch(server_.url("/a")).why(), testing::HasSubstr(why)) << place;
    }
}

TEST_F(HostileDownload, AsksForARedirectOfOtherLettersInPlainOnes) {
    server_.serve("/a", tests::redirectTo("/\xc3\xa4 b"));
    server_.serve("/%c3%a4%20b", {.body = bytesOf("good")});
    EXPECT_EQ(fetch(server_.url("/a")).text(), "good");
}

TEST_F(HostileDownload, StaysWhereARedirectNamesNoPlace) {
    for (const char* place : {"", "   "}) {
        server_.serve("/a",
                      {.status = 302, .body = bytesOf("here"), .headers = {{"Location", place}}});
        EXPECT_EQ(fetch(server_.url("/a")).text(), "here");
    }
}

TEST_F(HostileDownload, SetsNoMemoryAsideForALengthThatIsOnlyTold) {
    session_->setLimits({.maxBytes = std::uint64_t{512} << 20U});
    server_.serve("/a", {.body = bytesOf("little"), .toldLength = std::uint64_t{512} << 20U});
    if (tests::resetMemoryPeak() < 0)
        GTEST_SKIP() << "this system does not let a process reset its peak of memory";
    const long before = tests::resetMemoryPeak();
    EXPECT_EQ(fetch(server_.url("/a")).why(), cutAfter(6));
    EXPECT_LT(tests::resetMemoryPeak() - before, 256 * 1024);
}

/// While it drips, turns go on and other downloads come and go; then it is left.
class DrippingServer : public HostileDownload, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Drips, DrippingServer, testing::Values("Head", "Body", "Chunks"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(DrippingServer, KeepsNobodyFromAnythingAndMayBeLeft) {
    const std::map<std::string, HttpScript> scripts{
        {"Head", dripping("HTTP/1.1 200 OK\r\n", "X: y\r\n")},
        {"Body", dripping(httpAnswer("Content-Length: 100000000\r\n"), "a")},
        {"Chunks", dripping(httpAnswer("Transfer-Encoding: chunked\r\n"), "1\r\na\r\n")}};
    server_.serve("/drip", {.script = scripts.at(GetParam())});
    server_.serve("/good", {.body = bytesOf("good")});
    const auto [slow, outcome] = task(server_.url("/drip"));
    slow->resume();
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(fetch(server_.url("/good")).text(), "good");
        bool isTurned = false;
        platform::MainQueue::main().async([&] { isTurned = true; });
        EXPECT_TRUE(runUntil([&] { return isTurned; }));
    }
    EXPECT_EQ(outcome->calls, 0);
    slow->cancel();
    EXPECT_TRUE(runUntilIdle());
    EXPECT_EQ(outcome->why(), "the download was cancelled");
    EXPECT_EQ(outcome->calls, 1);
    EXPECT_TRUE(server_.waitForOpenConnections(1)) << "that of the good ones is kept";
}
