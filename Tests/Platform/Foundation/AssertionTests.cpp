#include "Platform/Foundation/Assertion.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

using namespace platform;

TEST(AssertionFailure, CarriesFileLineAndDescription) {
    const AssertionFailure failure("ZNTProgram", 69, "Content type is missing");
    EXPECT_EQ(failure.file(), "ZNTProgram");
    EXPECT_EQ(failure.line(), 69);
    EXPECT_EQ(failure.description(), "Content type is missing");
}

TEST(AssertionFailure, SaysItAllInItsMessage) {
    const AssertionFailure failure("ZNTProgram", 69, "Content type is missing");
    EXPECT_STREQ(failure.what(), "ZNTProgram:69: Content type is missing");
}

TEST(AssertionFailure, IsAProgrammingError) {
    const LogRecorder log;
    EXPECT_THROW(failAssertion("File", 1, "broken"), std::logic_error);
}

TEST(FailAssertion, ThrowsWhatItIsGiven) {
    const LogRecorder log;
    try {
        failAssertion("File", 7, "broken");
    } catch (const AssertionFailure& failure) {
        EXPECT_EQ(failure.file(), "File");
        EXPECT_EQ(failure.line(), 7);
        EXPECT_EQ(failure.description(), "broken");
        return;
    }
    FAIL() << "nothing was thrown";
}

TEST(FailAssertion, LogsTheFailureAsAnErrorOnce) {
    std::string logged;
    LogSink previous = setLogSink([&](LogLevel level, std::string_view text) {
        EXPECT_EQ(level, LogLevel::Error);
        logged += text;
    });
    EXPECT_THROW(failAssertion("File", 7, "broken"), AssertionFailure);
    setLogSink(std::move(previous));
    EXPECT_EQ(logged, "File:7: broken");
}
