#include "Platform/Foundation/Log.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

using namespace platform;

namespace {

/// Puts back the sink that was there.
struct SinkRestorer {
    explicit SinkRestorer(LogSink sink) : previous(setLogSink(std::move(sink))) {}
    ~SinkRestorer() { setLogSink(previous); }
    SinkRestorer(const SinkRestorer&) = delete;
    SinkRestorer& operator=(const SinkRestorer&) = delete;
    LogSink previous;
};

std::string standardErrorOf(LogLevel level, const char* text) {
    testing::internal::CaptureStderr();
    log(level, text);
    return testing::internal::GetCapturedStderr();
}

} // namespace

TEST(FirstLogSink, WritesOneLineToStandardError) {
    EXPECT_EQ(standardErrorOf(LogLevel::Error, "lost"), "zanto: error: lost\n");
    EXPECT_EQ(standardErrorOf(LogLevel::Warning, "worse"), "zanto: warning: worse\n");
    EXPECT_EQ(standardErrorOf(LogLevel::Info, "fact"), "zanto: info: fact\n");
}

TEST(FirstLogSink, KeepsDebugLinesToItself) {
    EXPECT_EQ(standardErrorOf(LogLevel::Debug, "rest"), "");
}

TEST(FirstLogSink, WritesNothingToStandardOutput) {
    testing::internal::CaptureStdout();
    standardErrorOf(LogLevel::Error, "lost");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(LogSink, ReceivesEveryLevelAndText) {
    std::vector<std::pair<LogLevel, std::string>> lines;
    const SinkRestorer sink(
        [&](LogLevel level, std::string_view text) { lines.emplace_back(level, text); });
    log(LogLevel::Debug, "d");
    log(LogLevel::Error, "");
    const std::vector<std::pair<LogLevel, std::string>> expected{{LogLevel::Debug, "d"},
                                                                 {LogLevel::Error, ""}};
    EXPECT_EQ(lines, expected);
}

TEST(LogSink, IsGivenBackWhenReplaced) {
    int first = 0;
    int second = 0;
    const SinkRestorer sink([&](LogLevel, std::string_view) { ++first; });
    const LogSink earlier = setLogSink([&](LogLevel, std::string_view) { ++second; });
    log(LogLevel::Info, "x");
    earlier(LogLevel::Info, "x");
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST(LogSink, SilencesTheLibraryWhenEmpty) {
    const SinkRestorer sink(nullptr);
    EXPECT_EQ(standardErrorOf(LogLevel::Error, "lost"), "");
}

TEST(LogSink, MayLogAndReplaceItself) {
    std::string lines;
    const SinkRestorer sink([&](LogLevel, std::string_view text) {
        setLogSink([&](LogLevel, std::string_view later) { lines += later; });
        log(LogLevel::Info, "inner ");
        lines += text;
    });
    log(LogLevel::Info, "outer");
    EXPECT_EQ(lines, "inner outer");
}

TEST(LogSink, ReceivesTheLinesOfEveryThread) {
    constexpr int kThreads = 4;
    constexpr int kLines = 500;
    std::atomic<int> received = 0;
    const SinkRestorer sink([&](LogLevel, std::string_view) { ++received; });
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < kLines; ++i)
                log(LogLevel::Info, "line");
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(received, kThreads * kLines);
}

TEST(LogSink, MayBeReplacedWhileOtherThreadsLog) {
    std::atomic<int> received = 0;
    const LogSink counting = [&](LogLevel, std::string_view) { ++received; };
    const SinkRestorer sink(counting);
    std::thread logging([] {
        for (int i = 0; i < 1000; ++i)
            log(LogLevel::Info, "line");
    });
    for (int i = 0; i < 1000; ++i)
        setLogSink(counting);
    logging.join();
    EXPECT_EQ(received, 1000);
}
