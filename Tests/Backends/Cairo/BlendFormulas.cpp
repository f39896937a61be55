#include "Tests/Backends/Cairo/BlendFormulas.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

using platform::BlendMode;

namespace {

double screen(double s, double d) {
    return s + d - s * d;
}

double hardLight(double s, double d) {
    return s <= 0.5 ? 2 * s * d : screen(2 * s - 1, d);
}

double colorDodge(double s, double d) {
    if (d == 0)
        return 0;
    return s == 1 ? 1 : std::min(1.0, d / (1 - s));
}

double colorBurn(double s, double d) {
    if (d == 1)
        return 1;
    return s == 0 ? 0 : 1 - std::min(1.0, (1 - d) / s);
}

double softLight(double s, double d) {
    if (s <= 0.5)
        return d - (1 - 2 * s) * d * (1 - d);
    const double root = d <= 0.25 ? ((16 * d - 12) * d + 4) * d : std::sqrt(d);
    return d + (2 * s - 1) * (root - d);
}

double mixedChannel(BlendMode mode, double s, double d) {
    switch (mode) {
    case BlendMode::Multiply:
        return s * d;
    case BlendMode::Screen:
        return screen(s, d);
    case BlendMode::Overlay:
        return hardLight(d, s);
    case BlendMode::Darken:
        return std::min(s, d);
    case BlendMode::Lighten:
        return std::max(s, d);
    case BlendMode::ColorDodge:
        return colorDodge(s, d);
    case BlendMode::ColorBurn:
        return colorBurn(s, d);
    case BlendMode::SoftLight:
        return softLight(s, d);
    case BlendMode::HardLight:
        return hardLight(s, d);
    case BlendMode::Difference:
        return std::abs(s - d);
    case BlendMode::Exclusion:
        return s + d - 2 * s * d;
    default:
        return s;
    }
}

double luminosityOf(const Channels& c) {
    return 0.3 * c[0] + 0.59 * c[1] + 0.11 * c[2];
}

double saturationOf(const Channels& c) {
    return *std::max_element(c.begin(), c.end()) - *std::min_element(c.begin(), c.end());
}

/// Moved to that luminosity, and towards grey as far as it then leaves the colours that there are.
Channels withLuminosity(Channels c, double luminosity) {
    const double shift = luminosity - luminosityOf(c);
    for (double& channel : c)
        channel += shift;
    const double low = *std::min_element(c.begin(), c.end());
    const double high = *std::max_element(c.begin(), c.end());
    for (double& channel : c) {
        if (low < 0)
            channel = luminosity + (channel - luminosity) * luminosity / (luminosity - low);
        if (high > 1)
            channel = luminosity + (channel - luminosity) * (1 - luminosity) / (high - luminosity);
    }
    return c;
}

Channels withSaturation(Channels c, double saturation) {
    const double low = *std::min_element(c.begin(), c.end());
    const double range = saturationOf(c);
    for (double& channel : c)
        channel = range == 0 ? 0 : (channel - low) * saturation / range;
    return c;
}

Channels mixed(BlendMode mode, const Channels& s, const Channels& d) {
    switch (mode) {
    case BlendMode::Hue:
        return withLuminosity(withSaturation(s, saturationOf(d)), luminosityOf(d));
    case BlendMode::Saturation:
        return withLuminosity(withSaturation(d, saturationOf(s)), luminosityOf(d));
    case BlendMode::Color:
        return withLuminosity(s, luminosityOf(d));
    case BlendMode::Luminosity:
        return withLuminosity(d, luminosityOf(s));
    default:
        return {mixedChannel(mode, s[0], d[0]), mixedChannel(mode, s[1], d[1]),
                mixedChannel(mode, s[2], d[2])};
    }
}

/// How much of the source and of the destination there is, for the modes that only cut them out.
std::pair<double, double> sharesOf(BlendMode mode, double sa, double da) {
    switch (mode) {
    case BlendMode::Clear:
        return {0, 0};
    case BlendMode::Copy:
        return {1, 0};
    case BlendMode::SourceIn:
        return {da, 0};
    case BlendMode::SourceOut:
        return {1 - da, 0};
    case BlendMode::SourceAtop:
        return {da, 1 - sa};
    case BlendMode::DestinationOver:
        return {1 - da, 1};
    case BlendMode::DestinationIn:
        return {0, sa};
    case BlendMode::DestinationAtop:
        return {1 - da, sa};
    case BlendMode::XOR:
        return {1 - da, 1 - sa};
    default:
        return {1, 1};
    }
}

BlendResult composed(const StraightColor& s, const StraightColor& d,
                     const std::function<double(double, double)>& ofPremultiplied, double alpha) {
    BlendResult result{{}, alpha};
    for (std::size_t i = 0; i < 3; ++i)
        result.premultiplied[i] = ofPremultiplied(s.channels[i] * s.alpha, d.channels[i] * d.alpha);
    return result;
}

} // namespace

BlendResult blended(BlendMode mode, const StraightColor& s, const StraightColor& d) {
    const double sum = std::min(1.0, s.alpha + d.alpha);
    if (mode == BlendMode::PlusLighter)
        return composed(
            s, d, [](double a, double b) { return std::min(1.0, a + b); }, sum);
    if (mode == BlendMode::PlusDarker) {
        const auto darker = [&](double a, double b) {
            return std::max(0.0, sum - (s.alpha - a) - (d.alpha - b));
        };
        return composed(s, d, darker, sum);
    }
    if (mode >= BlendMode::Clear) {
        const auto shares = sharesOf(mode, s.alpha, d.alpha);
        const auto cut = [&](double a, double b) { return shares.first * a + shares.second * b; };
        return composed(s, d, cut, cut(s.alpha, d.alpha));
    }
    const Channels both = mixed(mode, s.channels, d.channels);
    BlendResult result{{}, s.alpha + d.alpha - s.alpha * d.alpha};
    for (std::size_t i = 0; i < 3; ++i)
        result.premultiplied[i] = (1 - d.alpha) * s.alpha * s.channels[i] +
                                  (1 - s.alpha) * d.alpha * d.channels[i] +
                                  s.alpha * d.alpha * both[i];
    return result;
}
