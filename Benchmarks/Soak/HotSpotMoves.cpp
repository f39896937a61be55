#include "Benchmarks/Soak/Moves.h"
#include "Benchmarks/Soak/Scene.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"

#include <chrono>
#include <numbers>

using namespace std::chrono_literals;

namespace {

using HotSpots = std::vector<std::shared_ptr<ZNTHotSpot>>;

std::shared_ptr<ZNTHotSpot> makeHotSpot(Scene& scene, const Media::Names& icons) {
    Dice& dice = scene.dice();
    constexpr auto pi = std::numbers::pi_v<float>;
    const auto vertical = static_cast<float>(dice.real(-0.5, 0.5)) * pi;
    const auto horizontal = static_cast<float>(dice.real(-1, 1)) * pi;
    auto spot = ZNTHotSpot::hotSpotWithTextureNamed(dice.of(icons), vertical, horizontal);
    spot->setHotSpotName("hot spot");
    spot->setScale(static_cast<float>(dice.real(0.1, 4)));
    return spot;
}

std::shared_ptr<ZNTHotSpotPickingPoint> makePickingPoint(Dice& dice) {
    if (dice.oneIn(4))
        return nullptr;
    auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    point->setRejectRate(dice.whole(0, 2));
    return point;
}

void place(Scene& scene, int count, const Media::Names& icons) {
    HotSpots spots;
    for (int i = 0; i < count; ++i)
        spots.push_back(makeHotSpot(scene, icons));
    if (scene.dice().oneIn(8))
        spots.push_back(nullptr);
    scene.player().addHotSpots(spots, makePickingPoint(scene.dice()));
}

void placeSome(Scene& scene) {
    place(scene, scene.dice().whole(1, 12), scene.media().icons);
}

void placeMany(Scene& scene) {
    place(scene, 300, scene.media().icons);
}

void placeBroken(Scene& scene) {
    place(scene, scene.dice().whole(1, 4), scene.media().brokenIcons);
}

/// Adds large hot spots all around, so that taps and looks hit one.
void surround(Scene& scene) {
    HotSpots spots;
    for (int i = -3; i <= 3; ++i) {
        auto spot = ZNTHotSpot::hotSpotWithTextureNamed(scene.media().icons.front(), 0,
                                                        static_cast<float>(i));
        spot->setScale(8);
        spots.push_back(std::move(spot));
    }
    scene.player().addHotSpots(spots, makePickingPoint(scene.dice()));
}

/// Adds the same hot spots again, at moved positions.
void moveHotSpots(Scene& scene) {
    const HotSpots spots = scene.player().hotSpots();
    for (const auto& spot : spots) {
        if (spot)
            spot->setHorizontalOffset(spot->horizontalOffset() + 0.1F);
    }
    scene.player().addHotSpots(spots, scene.player().hotSpotPickingPoint());
}

void clear(Scene& scene) {
    scene.player().addHotSpots({}, nullptr);
}

void switchAutoPicking(Scene& scene) {
    scene.player().setEnableHotSpotAutoPicking(!scene.dice().oneIn(4));
}

void switchTapDetection(Scene& scene) {
    scene.player().setEnableHotSpotTapDetection(!scene.dice().oneIn(4));
}

/// Waits long enough for automatic picking to pick, then picks by tap.
void pick(Scene& scene) {
    scene.replacePlayer();
    Visitor& player = scene.player();
    player.setEnableHotSpotAutoPicking(true);
    player.setEnableHotSpotTapDetection(true);
    surround(scene);
    player.prepareImageWithUrl(
        platform::URL::fileURLWithPath(scene.media().pathOf(scene.media().pictures.front())));
    scene.appear();
    scene.run(1200ms);
    scene.touch(platform::TouchPhase::Down, 1, {0.5, 0.5});
    scene.touch(platform::TouchPhase::Up, 1, {0.5, 0.5});
}

} // namespace

Moves hotSpotMoves() {
    return {{"some hot spots", 4, placeSome},
            {"300 hot spots", 1, placeMany},
            {"broken hot spots", 2, placeBroken},
            {"hot spots around", 3, surround},
            {"picked hot spots", 1, pick},
            {"moved hot spots", 2, moveHotSpots},
            {"no hot spots", 2, clear},
            {"auto picking", 3, switchAutoPicking},
            {"tap detection", 3, switchTapDetection}};
}
