#include "Platform/Foundation/URLSession.h"
#include "Tests/Platform/Foundation/DownloadScene.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>

using testing::SizeIs;
using tests::HttpReply;

namespace {

class Download : public DownloadScene {};

/// Bytes that tell every place from its neighbours.
std::vector<std::uint8_t> manyBytes(std::size_t count) {
    std::vector<std::uint8_t> bytes(count);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<std::uint8_t>(i % 251);
    return bytes;
}

} // namespace

TEST_F(Download, DeliversWhatIsServed) {
    server_.serve("/a", {.body = bytesOf("hello")});
    const Outcome outcome = fetch(server_.url("/a"));
    EXPECT_EQ(outcome.text(), "hello");
    EXPECT_EQ(outcome.why(), "no error");
}

TEST_F(Download, IsHeardOnceAndNotInsideTheStart) {
    server_.serve("/a", {.body = bytesOf("hello")});
    const Outcome outcome = fetch(server_.url("/a"));
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(outcome.calls, 1);
    EXPECT_FALSE(outcome.wasInsideResume);
}

TEST_F(Download, IsWholeHoweverItIsFramed) {
    const auto bytes = manyBytes(3'000'000);
    server_.serve("/length", {.body = bytes});
    server_.serve("/chunks", {.body = bytes, .framing = HttpReply::Framing::Chunked});
    server_.serve("/close", {.body = bytes, .framing = HttpReply::Framing::UntilClose});
    for (const char* path : {"/length", "/chunks", "/close"})
        EXPECT_TRUE(fetch(server_.url(path)).data == bytes) << path;
}

TEST_F(Download, OfNothingIsEmptyData) {
    server_.serve("/a", {});
    const Outcome outcome = fetch(server_.url("/a"));
    ASSERT_TRUE(outcome.data);
    EXPECT_TRUE(outcome.data->empty());
    EXPECT_FALSE(outcome.error);
}

TEST_F(Download, DeliversTheBodyOfAnyStatus) {
    server_.serve("/a", {.status = 404, .body = bytesOf("gone")});
    server_.serve("/b", {.status = 500, .body = bytesOf("broken")});
    EXPECT_EQ(fetch(server_.url("/a")).text(), "gone");
    EXPECT_EQ(fetch(server_.url("/b")).text(), "broken");
}

TEST_F(Download, KnowsTheStatusOfTheAnswer) {
    server_.serve("/a", {.status = 404, .body = bytesOf("gone")});
    server_.serve("/b", {.status = 500});
    for (const auto& [path, status] : {std::pair("/a", 404), std::pair("/b", 500)}) {
        std::weak_ptr<platform::DataTask> weak;
        int told = 0;
        const auto task =
            session_->dataTaskWithURL(urlOf(server_.url(path)), [&](const auto&, const auto&) {
                told = weak.lock()->progress().status;
            });
        weak = task;
        task->resume();
        ASSERT_TRUE(runUntil([&] { return told != 0; }));
        EXPECT_EQ(told, status);
    }
}

TEST_F(Download, NamesItselfToTheServer) {
    (void)fetch(server_.url("/a?b=c"));
    ASSERT_THAT(server_.requests(), SizeIs(1));
    EXPECT_EQ(server_.requests()[0].method, "GET");
    EXPECT_EQ(server_.requests()[0].target, "/a?b=c");
    EXPECT_EQ(server_.requests()[0].header("user-agent"), "ZantoPlayerFramework");
}

TEST_F(Download, FollowsTenRedirects) {
    for (int i = 0; i < 10; ++i)
        server_.serve("/" + std::to_string(i), tests::redirectTo("/" + std::to_string(i + 1)));
    server_.serve("/10", {.body = bytesOf("there")});
    EXPECT_EQ(fetch(server_.url("/0")).text(), "there");
}

TEST_F(Download, FollowsARedirectToAnotherServer) {
    tests::HttpServer other;
    other.serve("/b", {.body = bytesOf("other")});
    HttpReply away = tests::redirectTo(other.url("/b"), 301);
    away.body = bytesOf("not this");
    server_.serve("/a", away);
    EXPECT_EQ(fetch(server_.url("/a")).text(), "other");
}

TEST_F(Download, KeepsAConnectionForTheNextOne) {
    server_.serve("/a", {.body = bytesOf("hello")});
    (void)fetch(server_.url("/a"));
    (void)fetch(server_.url("/a"));
    EXPECT_EQ(server_.connections(), 1);
}

TEST_F(Download, RunsBesideOthers) {
    server_.serve("/slow", {.body = bytesOf("slow"), .stallAfter = 2});
    server_.serve("/fast", {.body = bytesOf("fast")});
    const auto slow = start(server_.url("/slow"));
    ASSERT_TRUE(server_.waitUntilStalled());
    EXPECT_EQ(fetch(server_.url("/fast")).text(), "fast");
    EXPECT_EQ(slow->calls, 0);
    server_.release();
    ASSERT_TRUE(runUntil([&] { return slow->calls > 0; }));
    EXPECT_EQ(slow->text(), "slow");
}

TEST_F(Download, HoldsVirtualTimeWhileItIsUnderWay) {
    server_.serve("/a", {.body = bytesOf("hello"), .stallAfter = 0});
    const auto outcome = start(server_.url("/a"));
    ASSERT_TRUE(server_.waitUntilStalled());
    EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 1);
    server_.release();
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(outcome->calls, 1);
}

TEST_F(Download, IsSecureWhereTheCertificateIsTrusted) {
    tests::HttpServer server(tests::HttpServer::Transport::Tls);
    session_->setLimits({.certificateFile = server.certificateFile()});
    server.serve("/a", {.body = manyBytes(200'000)});
    server_.serve("/a", tests::redirectTo(server.url("/a")));
    EXPECT_TRUE(fetch(server_.url("/a")).data == manyBytes(200'000)) << "also after a redirect";
}

TEST_F(Download, ReadsFiles) {
    const tests::TemporaryFolder folder;
    const auto bytes = manyBytes(100'000);
    const auto url = platform::URL::fileURLWithPath(folder.add("a b#c%.bin", bytes));
    EXPECT_TRUE(fetch(url.absoluteString()).data == bytes);
}

TEST_F(Download, MayTakeAsMuchAsTheLimit) {
    session_->setLimits({.maxBytes = 5});
    server_.serve("/length", {.body = bytesOf("hello")});
    server_.serve("/close", {.body = bytesOf("hello"), .framing = HttpReply::Framing::UntilClose});
    EXPECT_EQ(fetch(server_.url("/length")).text(), "hello");
    EXPECT_EQ(fetch(server_.url("/close")).text(), "hello");
}

TEST_F(Download, MayDripForLongerThanItMayStall) {
    session_->setLimits({.stallTime = std::chrono::seconds(1)});
    server_.serve(
        "/a", {.body = manyBytes(100), .dripBytes = 1, .dripPause = std::chrono::milliseconds(12)});
    EXPECT_EQ(fetch(server_.url("/a")).text().size(), 100U);
}

TEST(URLSession, HasTheLimitsOfADownloadThatPeopleWaitFor) {
    const auto session = platform::URLSession::sharedSession();
    EXPECT_EQ(session, platform::URLSession::sharedSession());
    EXPECT_EQ(session->limits().maxBytes, std::uint64_t{512} * 1024 * 1024);
    EXPECT_EQ(session->limits().connectTime, std::chrono::seconds(30));
    EXPECT_EQ(session->limits().stallTime, std::chrono::seconds(60));
    EXPECT_EQ(session->limits().maxRedirects, 10);
}

TEST_F(Download, OfASessionThatEndsStopsUnheard) {
    server_.serve("/a", {.body = bytesOf("hello"), .stallAfter = 1});
    const auto outcome = start(server_.url("/a"));
    ASSERT_TRUE(server_.waitUntilStalled());
    session_.reset();
    EXPECT_TRUE(server_.waitForOpenConnections(0));
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(outcome->calls, 0);
}

TEST_F(Download, MayDropItsSessionInItsCompletion) {
    server_.serve("/a", {.body = bytesOf("hello")});
    bool isCalled = false;
    session_
        ->dataTaskWithURL(urlOf(server_.url("/a")),
                          [&](const auto&, const auto&) {
                              session_.reset();
                              isCalled = true;
                          })
        ->resume();
    EXPECT_TRUE(runUntil([&] { return isCalled; }));
}

TEST_F(Download, MayStartAnotherInItsCompletion) {
    server_.serve("/a", {.body = bytesOf("one")});
    server_.serve("/b", {.body = bytesOf("two")});
    std::shared_ptr<Outcome> second;
    session_
        ->dataTaskWithURL(urlOf(server_.url("/a")),
                          [&](const auto&, const auto&) { second = start(server_.url("/b")); })
        ->resume();
    ASSERT_TRUE(runUntil([&] { return second && second->calls > 0; }));
    EXPECT_EQ(second->text(), "two");
}

TEST_F(Download, OfTheSharedSessionEndsWithTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto leaveInTheMiddle = [&] {
        server_.serve("/a", {.body = bytesOf("hello"), .stallAfter = 1});
        platform::URLSession::sharedSession()
            ->dataTaskWithURL(urlOf(server_.url("/a")), [](const auto&, const auto&) {})
            ->resume();
        std::exit(server_.waitUntilStalled() ? 0 : 1);
    };
    EXPECT_EXIT(leaveInTheMiddle(), testing::ExitedWithCode(0), "");
}
