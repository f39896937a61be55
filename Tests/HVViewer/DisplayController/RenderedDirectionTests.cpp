#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <ostream>
#include <string>
#include <vector>

namespace {

struct Scene {
    DisplayMode mode;
    platform::Size size;
    double scale;
};

std::string sceneName(const Scene& scene) {
    constexpr std::array<const char*, 3> names{"Plane", "Sphere", "LittlePlanet"};
    return std::string(names.at(static_cast<std::size_t>(scene.mode))) +
           std::to_string(std::lround(scene.size.width)) + "x" +
           std::to_string(std::lround(scene.size.height)) + "at" +
           std::to_string(std::lround(scene.scale));
}

/// For GoogleTest, which prints bytes otherwise.
void PrintTo(const Scene& scene, std::ostream* stream) {
    *stream << sceneName(scene);
}

class RenderedDirection : public ::testing::TestWithParam<Scene> {};

std::vector<Scene> scenes() {
    // Phones, tablets, 3:2, square, very wide, very tall, both ways round; odd sizes.
    constexpr std::array<platform::Size, 9> sizes{{{640, 360},
                                                   {360, 640},
                                                   {400, 300},
                                                   {300, 400},
                                                   {450, 300},
                                                   {300, 450},
                                                   {301, 301},
                                                   {777, 201},
                                                   {201, 777}}};
    std::vector<Scene> list;
    for (const DisplayMode mode :
         {DisplayMode::Plane, DisplayMode::Sphere, DisplayMode::LittlePlanet}) {
        for (const platform::Size size : sizes)
            list.push_back({mode, size, 1});
        list.push_back({mode, {213, 120}, 2});
        list.push_back({mode, {120, 213}, 3});
    }
    return list;
}

} // namespace

TEST_P(RenderedDirection, IsWhatAPersonWouldSee) {
    const Scene& scene = GetParam();
    HeadlessPlayer player(scene.size, scene.scale);
    player.controller().setDisplayMode(scene.mode);
    player.show(directionPanorama(2048));
    // The panorama's 8 bits, its interpolation and the mesh's flat quads each cost about one step.
    // Four steps are a quarter of a degree.
    EXPECT_TRUE(picturesMatch("direction-" + sceneName(scene), *player.snapshot(),
                              *expectedDirections(scene.mode, scene.size, scene.scale)));
}

INSTANTIATE_TEST_SUITE_P(AllModes, RenderedDirection, ::testing::ValuesIn(scenes()),
                         [](const auto& scene) { return sceneName(scene.param); });
