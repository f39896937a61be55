#include "HVViewer/Model/ZNTInterractor.h"
#include "Platform/Foundation/Screen.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <random>
#include <string>

// What a person sees under a point is worked out here from the quads alone: no drawing, no colours.

namespace {

constexpr float kPi = 3.14159265F;

struct Look {
    platform::Size size;
    DisplayMode mode;
    double scale = 1;
};

using Random = std::mt19937;

double between(Random& random, double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
}

/// Whether the ray through a place of the view meets a hot spot's quad between the near and the far
/// plane. `x` and `y` are from -1 to 1, upward.
bool isHit(const GLKMatrix4& matrix, double halfHeight, double x, double y) {
    // clip = matrix * (u, v, 0, 1); the place gives two equations: clip.x = x clip.w, clip.y = y
    // clip.w
    const auto m = [&matrix](std::size_t row, std::size_t column) {
        return static_cast<double>(matrix.m[4 * column + row]);
    };
    const double a = m(0, 0) - x * m(3, 0);
    const double b = m(0, 1) - x * m(3, 1);
    const double c = x * m(3, 3) - m(0, 3);
    const double d = m(1, 0) - y * m(3, 0);
    const double e = m(1, 1) - y * m(3, 1);
    const double f = y * m(3, 3) - m(1, 3);
    const double determinant = a * e - b * d;
    if (determinant == 0)
        return false;
    const double u = (c * e - b * f) / determinant;
    const double v = (a * f - c * d) / determinant;
    if (std::abs(u) > 0.5 || std::abs(v) > halfHeight)
        return false;
    const double w = m(3, 0) * u + m(3, 1) * v + m(3, 3);
    const double z = m(2, 0) * u + m(2, 1) * v + m(2, 3);
    return w > 0 && std::abs(z) <= w;
}

/// The hot spot that is seen at a place of the view in pixels; -1 for none.
int seenAt(const ZNTHotSpotDrawer::HotSpots& spots, const GLKMatrix4& scene, platform::Size size,
           double x, double y) {
    const platform::Size screen = platform::Screen::mainScreen().nativeBounds().size;
    const double halfHeight = screen.width / screen.height;
    int seen = -1;
    for (const auto& spot : spots) {
        spot->updateWithModelViewProjection(scene);
        if (isHit(spot->hotSpotModelViewProjectionMatrix(), halfHeight, 2 * x / size.width - 1,
                  1 - 2 * y / size.height))
            seen = static_cast<int>(spot->indexID());
    }
    return seen;
}

/// The same, unless an edge is within a pixel.
std::optional<int> clearlySeenAt(const ZNTHotSpotDrawer::HotSpots& spots, const GLKMatrix4& scene,
                                 platform::Size size, platform::Point pixel) {
    const int seen = seenAt(spots, scene, size, pixel.x + 0.5, pixel.y + 0.5);
    for (const double dx : {-0.5, 0.5, 1.5}) {
        for (const double dy : {-0.5, 0.5, 1.5}) {
            if (seenAt(spots, scene, size, pixel.x + dx, pixel.y + dy) != seen)
                return std::nullopt;
        }
    }
    return seen;
}

ZNTHotSpotDrawer::HotSpots randomSpots(Random& random) {
    ZNTHotSpotDrawer::HotSpots spots;
    const int count = 1 + static_cast<int>(random() % 12);
    for (int i = 0; i < count; ++i) {
        spots.push_back(spotAt(static_cast<float>(between(random, -kPi / 2, kPi / 2)),
                               static_cast<float>(between(random, -kPi, kPi))));
        spots.back()->setScale(static_cast<float>(between(random, 0.3, 6)));
        spots.back()->setXTransform(static_cast<float>(between(random, 0.5, 2)));
        spots.back()->setYTransform(static_cast<float>(between(random, 0.5, 2)));
    }
    // One at either pole.
    spots.front()->setVerticalOffset(random() % 2 ? kPi / 2 : -kPi / 2);
    return spots;
}

void aimAtRandom(ZNTInterractor& camera, Random& random) {
    const auto angle = [&random] { return static_cast<float>(between(random, -kPi, kPi)); };
    camera.setViewMatrix(GLKMatrix4MakeRotation(angle(), 1, 0, 0));
    camera.setRotationMatrix(GLKMatrix4MakeRotation(angle(), 0, 0, 1));
    camera.setScale(between(random, 0.5, 3));
}

class Picking : public ::testing::TestWithParam<Look> {};

} // namespace

TEST_P(Picking, FindsWhatThereIsToSee) {
    HotSpotScene scene(GetParam().size, GetParam().scale);
    scene.controller().setDisplayMode(GetParam().mode);
    scene.advance(1);
    SelectionListener selections;
    Random random(static_cast<unsigned>(GetParam().size.width) +
                  static_cast<unsigned>(GetParam().mode));
    int hits = 0;
    for (int view = 0; view < 60; ++view) {
        scene.showSpots(randomSpots(random));
        aimAtRandom(*scene.view().interractor(), random);
        scene.view().update();
        const GLKMatrix4 camera = scene.view().modelViewProjectionMatrix();
        const platform::Size size = scene.view().frame().size;
        for (int i = 0; i < 20; ++i) {
            const platform::Point pixel{std::floor(between(random, 0, size.width)),
                                        std::floor(between(random, 0, size.height))};
            const auto expected = clearlySeenAt(scene.drawer().hotSpots(), camera, size, pixel);
            if (!expected)
                continue;
            scene.view().objectPickTestForPixelAtX(static_cast<int>(pixel.x),
                                                   static_cast<int>(pixel.y));
            const auto found = selections.take();
            ASSERT_EQ(found.empty() ? -1 : found.front().index, *expected)
                << "view " << view << " at " << pixel.x << ", " << pixel.y;
            hits += *expected >= 0 ? 1 : 0;
        }
    }
    EXPECT_GT(hits, 60) << "too few to prove anything";
}

INSTANTIATE_TEST_SUITE_P(
    Looks, Picking,
    ::testing::Values(
        Look{{96, 54}, DisplayMode::Plane}, Look{{96, 54}, DisplayMode::Sphere},
        Look{{96, 54}, DisplayMode::LittlePlanet}, Look{{98, 54}, DisplayMode::SideBySide},
        Look{{54, 96}, DisplayMode::Plane}, Look{{54, 96}, DisplayMode::Sphere},
        Look{{54, 96}, DisplayMode::LittlePlanet}, Look{{54, 96}, DisplayMode::SideBySide},
        Look{{96, 54}, DisplayMode::Sphere, 2}, Look{{98, 54}, DisplayMode::SideBySide, 1.5}),
    [](const auto& look) {
        return "mode" + std::to_string(static_cast<int>(look.param.mode)) +
               (look.param.size.width > look.param.size.height ? "Landscape" : "Portrait") +
               (look.param.scale == 1 ? "" : "Dense");
    });
