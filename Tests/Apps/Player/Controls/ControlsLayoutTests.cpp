#include "Apps/Player/Controls/ControlsLayout.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using platform::Rect;
using platform::Size;

namespace {

ControlsState picture() {
    return {};
}

ControlsState video() {
    ControlsState state;
    state.video = ControlsState::Video{true, 5, 20, 0.6};
    return state;
}

ControlsState everything() {
    ControlsState state = video();
    state.loading = ControlsState::Loading{"Opening tour.mp4", 0.4};
    state.message = "tour.mp4: there is no such file";
    return state;
}

constexpr Size kLandscape{1280, 720};
constexpr Size kPortrait{360, 640};

std::vector<Size> manySizes() {
    std::vector<Size> sizes;
    for (const double width : {1.0, 40.0, 60.0, 100.0, 160.0, 200.0, 320.0, 360.0, 412.0, 544.0,
                               600.0, 768.0, 1280.0, 3840.0}) {
        for (const double height :
             {1.0, 40.0, 60.0, 90.0, 120.0, 180.0, 240.0, 360.0, 640.0, 2160.0})
            sizes.push_back({width, height});
    }
    return sizes;
}

std::string nameOf(Size size) {
    return std::to_string(size.width) + " x " + std::to_string(size.height);
}

bool isWithin(const Rect& inner, const Rect& outer) {
    return inner.origin.x >= outer.origin.x && inner.origin.y >= outer.origin.y &&
           inner.origin.x + inner.size.width <= outer.origin.x + outer.size.width &&
           inner.origin.y + inner.size.height <= outer.origin.y + outer.size.height;
}

bool overlap(const Rect& one, const Rect& other) {
    constexpr double touching = 1e-6;
    return one.origin.x + one.size.width > other.origin.x + touching &&
           other.origin.x + other.size.width > one.origin.x + touching &&
           one.origin.y + one.size.height > other.origin.y + touching &&
           other.origin.y + other.size.height > one.origin.y + touching;
}

/// Of the panel, with a notice's.
std::vector<Rect> pressedAreas(const ControlsLayout& layout) {
    std::vector<Rect> areas;
    for (const auto& place : layout.places)
        areas.push_back(place.area);
    for (const auto& place : {layout.cancel, layout.dismiss}) {
        if (place)
            areas.push_back(place->area);
    }
    return areas;
}

double rowOf(const ControlsLayout& layout, Control control) {
    const auto* const area = layout.areaOf(control);
    return area ? area->origin.y : -1;
}

} // namespace

TEST(ControlsLayout, HasEverythingForAVideoInTwoRowsWhereItIsWide) {
    const auto layout = layOutControls(kLandscape, video());
    EXPECT_EQ(layout.places.size(), 12U);
    const double buttons = rowOf(layout, Control::Playback);
    for (const Control control : {Control::Mute, Control::VolumeBar, Control::Plane,
                                  Control::SideBySide, Control::DeviceMotion, Control::FullScreen})
        EXPECT_EQ(rowOf(layout, control), buttons);
    EXPECT_LT(rowOf(layout, Control::SeekBar), buttons);
    EXPECT_GT(layout.elapsed.size.width, 0);
    EXPECT_GT(layout.length.size.width, 0);
}

TEST(ControlsLayout, HasEverythingForAVideoInThreeRowsOnATelephone) {
    const auto layout = layOutControls(kPortrait, video());
    EXPECT_EQ(layout.places.size(), 12U);
    EXPECT_LT(rowOf(layout, Control::SeekBar), rowOf(layout, Control::Playback));
    EXPECT_LT(rowOf(layout, Control::Playback), rowOf(layout, Control::Plane));
    EXPECT_EQ(rowOf(layout, Control::Plane), rowOf(layout, Control::FullScreen));
}

TEST(ControlsLayout, HasNoPlaybackForAPicture) {
    const auto layout = layOutControls(kLandscape, picture());
    EXPECT_EQ(layout.places.size(), 8U);
    for (const Control control :
         {Control::Playback, Control::Mute, Control::VolumeBar, Control::SeekBar})
        EXPECT_EQ(layout.areaOf(control), nullptr);
    EXPECT_EQ(layout.elapsed, Rect());
}

TEST(ControlsLayout, HasNoSeekBarWhereTheLengthIsNotKnown) {
    ControlsState live = video();
    live.video->duration.reset();
    const auto layout = layOutControls(kLandscape, live);
    EXPECT_EQ(layout.areaOf(Control::SeekBar), nullptr);
    EXPECT_NE(layout.areaOf(Control::Playback), nullptr);
    EXPECT_GT(layout.elapsed.size.width, 0);
}

TEST(ControlsLayout, IsLargeEnoughForFingersInEveryWindow) {
    for (const Size size : manySizes()) {
        for (const auto& state : {picture(), video(), everything()}) {
            for (const Rect& area : pressedAreas(layOutControls(size, state))) {
                EXPECT_GE(area.size.height, 44) << nameOf(size);
                EXPECT_GE(area.size.width, 44) << nameOf(size);
            }
        }
    }
}

TEST(ControlsLayout, StaysInsideEveryWindow) {
    for (const Size size : manySizes()) {
        for (const auto& state : {picture(), video(), everything()}) {
            const auto layout = layOutControls(size, state);
            std::vector<Rect> areas = pressedAreas(layout);
            for (const Rect& area : {layout.panel, layout.elapsed, layout.length, layout.loading,
                                     layout.loadingBar, layout.message})
                areas.push_back(area);
            for (const Rect& area : areas)
                EXPECT_TRUE(isWithin(area, {{0, 0}, size})) << nameOf(size);
        }
    }
}

TEST(ControlsLayout, NeverLetsPlacesOfTheBarOverlap) {
    for (const Size size : manySizes()) {
        const auto layout = layOutControls(size, video());
        std::vector<Rect> areas{layout.elapsed, layout.length};
        for (const auto& place : layout.places) {
            EXPECT_TRUE(isWithin(place.area, layout.panel)) << nameOf(size);
            areas.push_back(place.area);
        }
        for (std::size_t i = 0; i < areas.size(); ++i) {
            for (std::size_t j = i + 1; j < areas.size(); ++j)
                EXPECT_FALSE(overlap(areas[i], areas[j])) << nameOf(size) << ' ' << i << ' ' << j;
        }
    }
}

TEST(ControlsLayout, KeepsPlayingLongestInASmallWindow) {
    const auto low = layOutControls({360, 60}, video());
    EXPECT_NE(low.areaOf(Control::Playback), nullptr);
    EXPECT_EQ(low.areaOf(Control::SeekBar), nullptr);
    const auto higher = layOutControls({360, 110}, video());
    EXPECT_NE(higher.areaOf(Control::SeekBar), nullptr);
    EXPECT_EQ(higher.areaOf(Control::Plane), nullptr);
}

TEST(ControlsLayout, HasNothingInAWindowThatIsTooSmall) {
    const auto layout = layOutControls({30, 30}, everything());
    EXPECT_TRUE(pressedAreas(layout).empty());
    EXPECT_EQ(layout.panel, Rect());
    EXPECT_EQ(layout.loading, Rect());
    EXPECT_EQ(layout.message, Rect());
}

TEST(ControlsLayout, FindsWhatIsUnderAPoint) {
    const auto layout = layOutControls(kLandscape, video());
    for (const auto& [control, area] : layout.places) {
        EXPECT_EQ(layout.controlAt(area.origin), control);
        EXPECT_EQ(layout.controlAt(
                      {area.origin.x + area.size.width / 2, area.origin.y + area.size.height - 1}),
                  control);
    }
    EXPECT_FALSE(layout.controlAt({640, 100}));
}

TEST(ControlsLayout, PutsNoticesBelowOneAnotherAtTheTop) {
    const auto layout = layOutControls(kLandscape, everything());
    ASSERT_TRUE(layout.cancel && layout.dismiss);
    EXPECT_TRUE(isWithin(layout.cancel->area, layout.loading));
    EXPECT_TRUE(isWithin(layout.loadingBar, layout.loading));
    EXPECT_FALSE(overlap(layout.loadingBar, layout.cancel->area));
    EXPECT_TRUE(isWithin(layout.dismiss->area, layout.message));
    EXPECT_GE(layout.message.origin.y, layout.loading.origin.y + layout.loading.size.height);
}

TEST(ControlsLayout, GivesAMessageMoreRoomTheLongerItIs) {
    ControlsState state;
    state.message = "short";
    const double low = layOutControls(kPortrait, state).message.size.height;
    state.message = std::string(400, 'w');
    EXPECT_GT(layOutControls(kPortrait, state).message.size.height, 2 * low);
}

TEST(Bars, CountFromEndToEnd) {
    const Rect bar{{100, 10}, {218, 48}};
    EXPECT_EQ(fractionAt(bar, 0), 0);
    EXPECT_EQ(fractionAt(bar, 109), 0);
    EXPECT_DOUBLE_EQ(fractionAt(bar, 209), 0.5);
    EXPECT_EQ(fractionAt(bar, 309), 1);
    EXPECT_EQ(fractionAt(bar, 1000), 1);
    for (const double fraction : {0.0, 0.25, 1.0})
        EXPECT_DOUBLE_EQ(fractionAt(bar, placeAt(bar, fraction)), fraction);
}
