#include "Benchmarks/Soak/Ledger.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr double kBound = 10;

/// Sixty samples, a tenth of a minute apart, of one amount.
Ledger measured(const std::function<double(int)>& amount) {
    Ledger ledger;
    ledger.setBound("memory", kBound);
    for (int i = 0; i < 60; ++i)
        ledger.measure("memory", i / 10.0, amount(i));
    return ledger;
}

/// Between -1 and 1, without a trend.
double scatter(int i) {
    return std::sin(i * 7.3);
}

} // namespace

TEST(Ledger, FindsNothingWithoutASample) {
    Ledger ledger;
    ledger.setBound("memory", kBound);
    EXPECT_THAT(ledger.growths(), IsEmpty());
}

TEST(Ledger, FindsFlatMemoryFlat) {
    EXPECT_THAT(measured([](int) { return 5000; }).growths(), IsEmpty());
}

TEST(Ledger, FindsMemoryThatGrowsBySoMuchAMinute) {
    EXPECT_THAT(measured([](int i) { return 5000 + 2.0 * i; }).growths(),
                ElementsAre("memory: grows by 20 a minute, by 20 at least; 10 is allowed"));
}

TEST(Ledger, AllowsGrowthUpToTheBound) {
    EXPECT_THAT(measured([](int i) { return 5000 + 0.9 * i; }).growths(), IsEmpty());
}

TEST(Ledger, FindsNoisyMemoryFlat) {
    EXPECT_THAT(measured([](int i) { return 5000 + 400 * scatter(i); }).growths(), IsEmpty());
}

TEST(Ledger, FindsGrowthUnderNoise) {
    EXPECT_THAT(measured([](int i) { return 5000 + 20.0 * i + 400 * scatter(i); }).growths(),
                ElementsAre(HasSubstr("memory: grows")));
}

TEST(Ledger, TakesASingleStepForNoGrowth) {
    EXPECT_THAT(measured([](int i) { return i < 20 ? 5000 : 9000; }).growths(), IsEmpty());
}

TEST(Ledger, TakesMemoryThatShrinksForNoGrowth) {
    EXPECT_THAT(measured([](int i) { return 9000 - 20.0 * i; }).growths(), IsEmpty());
}

TEST(Ledger, SaysNothingOfMemoryFromAFewSamples) {
    Ledger ledger;
    ledger.setBound("memory", kBound);
    for (std::size_t i = 0; i + 1 < Ledger::kFewest; ++i)
        ledger.measure("memory", static_cast<double>(i), 1000.0 * static_cast<double>(i));
    EXPECT_THAT(ledger.growths(), IsEmpty());
}

TEST(Ledger, FindsOneMoreOfWhatIsCounted) {
    Ledger ledger;
    for (const int textures : {4, 4, 5})
        ledger.count("textures", textures);
    EXPECT_THAT(ledger.growths(), ElementsAre("textures: 4 at first, up to 5 since, 5 at the end"));
}

TEST(Ledger, FindsWhatWasTooMuchInBetween) {
    Ledger ledger;
    for (const int threads : {4, 7, 4})
        ledger.count("threads", threads);
    EXPECT_THAT(ledger.growths(), ElementsAre(HasSubstr("up to 7")));
}

TEST(Ledger, FindsTheSameCountsFlat) {
    Ledger ledger;
    for (int i = 0; i < 3; ++i)
        ledger.count("files", 9);
    EXPECT_THAT(ledger.growths(), IsEmpty());
}
