#pragma once

#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/URLSession.h"
#include "Tests/Support/HttpServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// How a download ended, and how often.
struct Outcome {
    int calls = 0;
    std::optional<platform::Data> data;
    std::optional<platform::Error> error;
    bool wasInsideResume = false;

    [[nodiscard]] std::string text() const {
        return data ? std::string(data->begin(), data->end()) : "no data";
    }
    [[nodiscard]] std::string why() const { return error ? error->detail : "no error"; }
};

/// A server, a session and the loop of a host that waits for it.
class DownloadScene : public ::testing::Test {
protected:
    DownloadScene() {
        // What the environment asks of programs is not to change what is measured here.
        ::setenv("no_proxy", "*", 1);
        platform::MainQueue::main().setWakeUp([this] {
            {
                const std::scoped_lock lock(mutex_);
                isWoken_ = true;
            }
            woken_.notify_one();
        });
    }
    ~DownloadScene() override {
        session_.reset();
        platform::MainQueue::main().reset();
    }

    static platform::URL urlOf(const std::string& text) {
        return platform::URL::URLWithString(text).value();
    }
    static std::vector<std::uint8_t> bytesOf(std::string_view text) {
        return {text.begin(), text.end()};
    }

    /// A task that has not started, and what will come of it.
    std::pair<std::shared_ptr<platform::DataTask>, std::shared_ptr<Outcome>>
    task(const std::string& url) {
        auto outcome = std::make_shared<Outcome>();
        auto task = session_->dataTaskWithURL(
            urlOf(url), [this, outcome](std::optional<platform::Data> data,
                                        std::optional<platform::Error> error) {
                ++outcome->calls;
                outcome->data = std::move(data);
                outcome->error = std::move(error);
                outcome->wasInsideResume = isStarting_;
            });
        return {std::move(task), std::move(outcome)};
    }

    std::shared_ptr<Outcome> start(const std::string& url) {
        const auto [started, outcome] = task(url);
        isStarting_ = true;
        started->resume();
        isStarting_ = false;
        return outcome;
    }

    /// Starts it and runs the loop until it has ended.
    Outcome fetch(const std::string& url) {
        const auto outcome = start(url);
        EXPECT_TRUE(runUntil([&] { return outcome->calls > 0; })) << url;
        return *outcome;
    }

    /// Runs the loop until `done`; false: not within ten seconds.
    [[nodiscard]] bool runUntil(const std::function<bool()>& done) {
        const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        for (;;) {
            platform::MainQueue::main().runDue();
            if (done())
                return true;
            std::unique_lock lock(mutex_);
            if (!woken_.wait_until(lock, last, [this] { return isWoken_; }))
                return false;
            isWoken_ = false;
        }
    }
    /// Waits until something has been queued, and runs nothing; false: not within ten seconds.
    [[nodiscard]] bool waitUntilWoken() {
        std::unique_lock lock(mutex_);
        return woken_.wait_for(lock, std::chrono::seconds(10), [this] { return isWoken_; });
    }
    /// Runs the loop until no work is under way any more.
    [[nodiscard]] bool runUntilIdle() {
        return runUntil([] { return platform::MainQueue::main().outstandingWork() == 0; });
    }

    tests::HttpServer server_;
    std::shared_ptr<platform::URLSession> session_ = platform::make<platform::URLSession>();

private:
    std::mutex mutex_; // guards isWoken_
    std::condition_variable woken_;
    bool isWoken_ = false;
    bool isStarting_ = false;
};
