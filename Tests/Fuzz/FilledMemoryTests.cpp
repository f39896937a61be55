#include "Fuzz/FilledMemory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

using testing::Each;

namespace {

constexpr std::size_t kCount = 5'000;

} // namespace

TEST(FilledMemory, GivesNewArraysItsByte) {
    const fuzz::FilledMemory filled(0x55);
    const std::unique_ptr<std::uint8_t[]> bytes(new std::uint8_t[kCount]);
    EXPECT_THAT(std::span(bytes.get(), kCount), Each(0x55));
}

TEST(FilledMemory, LeavesWhatArraysAreMadeOf) {
    const fuzz::FilledMemory filled(0x55);
    const std::unique_ptr<std::uint8_t[]> bytes(new std::uint8_t[kCount]{});
    EXPECT_THAT(std::span(bytes.get(), kCount), Each(0));
}
