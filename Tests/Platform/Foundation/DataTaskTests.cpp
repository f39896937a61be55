#include "Platform/Foundation/DataTask.h"
#include "Tests/Platform/Foundation/DownloadScene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

using testing::IsEmpty;
using tests::HttpReply;

namespace {

class Task : public DownloadScene {
protected:
    void expectCancelled(const Outcome& outcome) {
        ASSERT_TRUE(runUntilIdle());
        EXPECT_EQ(outcome.calls, 1);
        EXPECT_FALSE(outcome.data);
        EXPECT_EQ(outcome.why(), "the download was cancelled");
    }
};

} // namespace

TEST_F(Task, KnowsItsAddress) {
    const auto url = urlOf(server_.url("/a"));
    EXPECT_EQ(session_->dataTaskWithURL(url, {})->originalURL(), url);
}

TEST_F(Task, DoesNothingUntilItIsResumed) {
    const auto [task, outcome] = this->task(server_.url("/a"));
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(outcome->calls, 0);
    EXPECT_EQ(server_.connections(), 0);
}

TEST_F(Task, IsFetchedOnceHoweverOftenItIsResumed) {
    const auto [task, outcome] = this->task(server_.url("/a"));
    task->resume();
    task->resume();
    ASSERT_TRUE(runUntilIdle());
    task->resume();
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(outcome->calls, 1);
    EXPECT_EQ(server_.requests().size(), 1U);
}

TEST_F(Task, IsOwnedByItsSessionUntilItHasEnded) {
    std::weak_ptr<platform::DataTask> weak;
    {
        const auto [task, outcome] = this->task(server_.url("/a"));
        task->resume();
        weak = task;
    }
    EXPECT_FALSE(weak.expired());
    ASSERT_TRUE(runUntilIdle());
    EXPECT_TRUE(weak.expired());
}

TEST_F(Task, GoesWithItsCallerBeforeItIsResumed) {
    std::weak_ptr<platform::DataTask> weak;
    {
        const auto [task, outcome] = this->task(server_.url("/a"));
        weak = task;
    }
    EXPECT_TRUE(weak.expired());
}

TEST_F(Task, LetsGoOfItsCompletionOnceItHasBeenCalled) {
    auto token = std::make_shared<int>(0);
    const auto task = session_->dataTaskWithURL(urlOf(server_.url("/a")),
                                                [token](const auto&, const auto&) { ++*token; });
    task->resume();
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(*token, 1);
    EXPECT_EQ(token.use_count(), 1);
}

TEST_F(Task, SaysThatItWasCancelledAndEndsItsConnection) {
    server_.serve("/a", {.body = bytesOf("hello"), .stallAfter = 2});
    const auto [task, outcome] = this->task(server_.url("/a"));
    task->resume();
    ASSERT_TRUE(server_.waitUntilStalled());
    task->cancel();
    EXPECT_EQ(outcome->calls, 0) << "never inside the call";
    EXPECT_TRUE(server_.waitForOpenConnections(0));
    expectCancelled(*outcome);
}

TEST_F(Task, MayBeCancelledBeforeItIsResumed) {
    const auto [task, outcome] = this->task(server_.url("/a"));
    task->cancel();
    task->resume();
    expectCancelled(*outcome);
    EXPECT_EQ(server_.connections(), 0);
}

TEST_F(Task, MayBeCancelledInTheTurnOfItsStart) {
    const auto [task, outcome] = this->task(server_.url("/a"));
    task->resume();
    task->cancel();
    expectCancelled(*outcome);
}

TEST_F(Task, MayBeCancelledTwice) {
    const auto [task, outcome] = this->task(server_.url("/a"));
    task->resume();
    task->cancel();
    task->cancel();
    expectCancelled(*outcome);
}

TEST_F(Task, MayBeCancelledWhenItsDataWaitsForATurn) {
    server_.serve("/a", {.body = bytesOf("hello")});
    const auto [task, outcome] = this->task(server_.url("/a"));
    task->resume();
    ASSERT_TRUE(waitUntilWoken());
    task->cancel();
    expectCancelled(*outcome);
}

TEST_F(Task, IsNotCancelledOnceItHasEnded) {
    server_.serve("/a", {.body = bytesOf("hello")});
    const auto [task, outcome] = this->task(server_.url("/a"));
    task->resume();
    ASSERT_TRUE(runUntilIdle());
    task->cancel();
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(outcome->calls, 1);
    EXPECT_EQ(outcome->text(), "hello");
}

TEST_F(Task, MayBeCancelledInItsCompletion) {
    std::shared_ptr<platform::DataTask> task;
    int calls = 0;
    task = session_->dataTaskWithURL(urlOf(server_.url("/a")), [&](const auto&, const auto&) {
        ++calls;
        task->cancel();
    });
    task->resume();
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(calls, 1);
}

TEST_F(Task, CompletesNeverOnceItsSessionHasGone) {
    const auto [task, outcome] = this->task(server_.url("/a"));
    session_.reset();
    task->resume();
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(outcome->calls, 0);
    EXPECT_EQ(server_.connections(), 0);
}

TEST_F(Task, TellsHowFarItIs) {
    server_.serve("/a", {.body = bytesOf("hello"), .stallAfter = 2});
    const auto [task, outcome] = this->task(server_.url("/a"));
    std::vector<std::uint64_t> received;
    bool wasBeforeTheEnd = true;
    task->setProgressListener([&, ended = outcome](const platform::TransferProgress& progress) {
        received.push_back(progress.bytesReceived);
        EXPECT_EQ(progress.bytesExpected, 5U);
        wasBeforeTheEnd = wasBeforeTheEnd && ended->calls == 0;
    });
    task->resume();
    ASSERT_TRUE(runUntil([&] { return !received.empty(); }));
    EXPECT_EQ(received.back(), 2U);
    EXPECT_EQ(task->progress().bytesReceived, 2U);
    ASSERT_TRUE(server_.waitUntilStalled());
    server_.release();
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(received.back(), 5U);
    EXPECT_TRUE(wasBeforeTheEnd);
}

TEST_F(Task, DoesNotKnowALengthThatIsNotTold) {
    server_.serve("/a", {.body = bytesOf("hello"), .framing = HttpReply::Framing::Chunked});
    const auto [task, outcome] = this->task(server_.url("/a"));
    task->resume();
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(task->progress().bytesReceived, 5U);
    EXPECT_FALSE(task->progress().bytesExpected);
}

TEST_F(Task, TellsNothingMoreOnceItIsCancelled) {
    server_.serve("/a", {.body = bytesOf("hello"), .stallAfter = 2});
    const auto [task, outcome] = this->task(server_.url("/a"));
    std::vector<std::uint64_t> received;
    task->setProgressListener(
        [&](const auto& progress) { received.push_back(progress.bytesReceived); });
    task->resume();
    ASSERT_TRUE(server_.waitUntilStalled());
    task->cancel();
    expectCancelled(*outcome);
    EXPECT_THAT(received, IsEmpty());
}

TEST_F(Task, MayBeCancelledByWhoListens) {
    server_.serve("/a", {.body = bytesOf("hello"), .stallAfter = 2});
    const auto [task, outcome] = this->task(server_.url("/a"));
    task->setProgressListener([weak = std::weak_ptr(task)](const auto&) {
        if (const auto self = weak.lock())
            self->cancel();
    });
    task->resume();
    ASSERT_TRUE(server_.waitUntilStalled());
    expectCancelled(*outcome);
}
