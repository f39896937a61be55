#include "Platform/Imaging/BitmapContext.h"
#include "Tests/Backends/Cairo/BlendFormulas.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

using platform::BlendMode;

namespace {

using Bytes4 = std::array<std::uint8_t, 4>;

/// Grey, dark, bright and strong colours, opaque and not. Five divides every channel and 51 every
/// alpha, so that channel times alpha is whole, and nothing is rounded but the result.
std::vector<Bytes4> colours(const std::vector<std::uint8_t>& alphas) {
    std::vector<Bytes4> all;
    for (const std::uint8_t alpha : alphas) {
        for (const auto& [red, green, blue] :
             std::vector<std::array<std::uint8_t, 3>>{{0, 0, 0},
                                                      {255, 255, 255},
                                                      {130, 130, 130},
                                                      {200, 100, 50},
                                                      {30, 60, 220},
                                                      {90, 180, 20},
                                                      {250, 240, 10},
                                                      {60, 10, 90}})
            all.push_back({red, green, blue, alpha});
    }
    return all;
}

StraightColor straight(const Bytes4& c) {
    return {{c[0] / 255.0, c[1] / 255.0, c[2] / 255.0}, c[3] / 255.0};
}

/// The source drawn over the whole of a pixel that the destination fills.
std::array<int, 4> drawn(BlendMode mode, const Bytes4& source, const Bytes4& destination) {
    const auto context = platform::makeBitmapContext({1, 1}, 1);
    const auto channel = [&](std::size_t i) { return static_cast<float>(destination[i]) / 255; };
    context->fillRect({{}, {1, 1}}, {channel(0), channel(1), channel(2), channel(3)});
    context->drawImage(*flatPicture(1, 1, source[0], source[1], source[2], source[3]), {{}, {1, 1}},
                       mode);
    return colourAt(*context->image(), 0, 0);
}

std::string text(const Bytes4& c) {
    return "(" + std::to_string(c[0]) + " " + std::to_string(c[1]) + " " + std::to_string(c[2]) +
           " " + std::to_string(c[3]) + ")";
}

/// How far the drawn colour is from its formula, in steps of 255; colours times their alpha, which
/// is what is seen of them.
double distance(BlendMode mode, const Bytes4& source, const Bytes4& destination) {
    const auto actual = drawn(mode, source, destination);
    const BlendResult expected = blended(mode, straight(source), straight(destination));
    double worst = std::abs(actual[3] - expected.alpha * 255);
    for (std::size_t i = 0; i < 3; ++i) {
        const double seen = actual[i] * actual[3] / 255.0;
        worst = std::max(worst, std::abs(seen - expected.premultiplied[i] * 255));
    }
    return worst;
}

class BlendModes : public testing::TestWithParam<int> {
protected:
    void expectFormula(const std::vector<Bytes4>& sources, const std::vector<Bytes4>& destinations,
                       double tolerance) {
        const auto mode = static_cast<BlendMode>(GetParam());
        for (const Bytes4& source : sources) {
            for (const Bytes4& destination : destinations)
                EXPECT_LE(distance(mode, source, destination), tolerance)
                    << text(source) << " on " << text(destination);
        }
    }
};

} // namespace

TEST_P(BlendModes, MixOpaqueColoursByTheirFormula) {
    expectFormula(colours({255}), colours({255}), 2);
}

TEST_P(BlendModes, MixTransparentColoursByTheirFormula) {
    expectFormula(colours({0, 102, 153, 255}), colours({0, 102, 153, 255}), 2);
}

INSTANTIATE_TEST_SUITE_P(All, BlendModes, testing::Range(0, 27));
