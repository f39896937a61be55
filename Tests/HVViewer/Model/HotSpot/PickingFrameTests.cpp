#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

// The frame in which a pick looks: the content is black there, and each point of the view is the
// pixel that people see under it.

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class AtAScale : public ::testing::TestWithParam<double> {};

/// The last column of a row of points in which a tap finds something, from the middle on.
int lastColumnHit(HotSpotScene& scene, SelectionListener& selections) {
    for (int x = 160; x < 320; ++x) {
        scene.view().objectPickTestForPixelAtX(x, 90);
        if (selections.take().empty())
            return x - 1;
    }
    return 320;
}

} // namespace

TEST(PickingFrame, HasNoneOfTheContentsColours) {
    // Each has the red of the hot spot's index.
    for (const auto& content : {flatPicture(64, 32, 50, 0, 0), flatPicture(64, 32, 50, 255, 0),
                                flatPicture(64, 32, 50, 50, 50)}) {
        HotSpotScene scene(content);
        SelectionListener selections;
        scene.showSpots({spotAt(0, 0, "door")});
        for (const platform::Point sky : {platform::Point{10, 10}, {300, 90}, {160, 170}})
            scene.view().objectPickTestForPixelAtX(static_cast<int>(sky.x),
                                                   static_cast<int>(sky.y));
        EXPECT_THAT(selections.take(), IsEmpty());
        scene.view().objectPickTestForPixelAtX(160, 90);
        EXPECT_THAT(selections.take(), ElementsAre(Selection{"door", 0, true}));
    }
}

TEST(PickingFrame, IsAnnouncedBeforeItAndItsEndWithTheMarkers) {
    HotSpotScene scene;
    scene.showSpots({spotAt(0, 0)});
    std::vector<std::string> order;
    const auto note = [&](const char* what) {
        order.push_back(std::string(what) + (scene.view().glDrawer()->enableColoring()
                                                 ? ", content in picking colours"
                                                 : ""));
    };
    const WhenPosted begin(ZNTHotSpotDrawerDisableDrawing, [&] { note("begin"); });
    const WhenPosted end(ZNTHotSpotDrawerEnableDrawing, [&] { note("end"); });
    const WhenPosted pick(ZNTHotSpotDrawerDetectHotSpotSelection, [&] { note("pick"); });
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_THAT(order, ElementsAre("begin, content in picking colours", "end", "pick"));
}

TEST(PickingFrame, IsAnnouncedUnderThesePublicNames) {
    EXPECT_STREQ(ZNTHotSpotDrawerDisableDrawing, "ZNTHotSpotDrawerDisableDrawing");
    EXPECT_STREQ(ZNTHotSpotDrawerEnableDrawing, "ZNTHotSpotDrawerEnableDrawing");
    EXPECT_STREQ(ZNTHotSpotDrawerDetectHotSpotSelection, "ZNTHotSpotDrawerDetectHotSpotSelection");
    EXPECT_STREQ(ZNTHotSpotDrawerHotSpotNameKey, "ZNTHotSpotDrawerHotSpotNameKey");
    EXPECT_STREQ(ZNTHotSpotDrawerHotSpotIndexKey, "ZNTHotSpotDrawerHotSpotIndexKey");
    EXPECT_STREQ(ZNTHotSpotDrawerTapKey, "ZNTHotSpotDrawerTapKey");
}

TEST(PickingFrame, IsAnnouncedWithoutASenderAndWithTheSelectionsEntriesOnly) {
    HotSpotScene scene;
    scene.showSpots({spotAt(0, 0, "door")});
    std::vector<platform::Notification> posted;
    const auto observer = platform::make<platform::Object>();
    auto& center = platform::NotificationCenter::defaultCenter();
    for (const char* name : {ZNTHotSpotDrawerDisableDrawing, ZNTHotSpotDrawerEnableDrawing,
                             ZNTHotSpotDrawerDetectHotSpotSelection})
        center.addObserver(observer, name,
                           [&posted](const auto& notification) { posted.push_back(notification); });
    scene.view().objectPickTestForPixelAtX(160, 90);
    center.removeObserver(observer.get());
    ASSERT_EQ(posted.size(), 3U);
    for (const auto& notification : posted)
        EXPECT_EQ(notification.object, nullptr) << notification.name;
    EXPECT_TRUE(posted[0].userInfo.empty());
    EXPECT_TRUE(posted[1].userInfo.empty());
    EXPECT_EQ(posted[2].userInfo,
              (platform::UserInfo{{ZNTHotSpotDrawerHotSpotNameKey, std::string("door")},
                                  {ZNTHotSpotDrawerHotSpotIndexKey, std::int64_t{0}},
                                  {ZNTHotSpotDrawerTapKey, true}}));
}

TEST_P(AtAScale, FindsWhatIsUnderAPointOfTheView) {
    HotSpotScene scene({320, 180}, GetParam());
    SelectionListener selections;
    scene.controller().setEnableHotSpotAutoPicking(true);
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5 - 0.215, 0.5);
    scene.showSpots({spotAt(0, 0.3F, "left"), spotAt(-0.2F, 0, "top"), spotAt(0.2F, 0, "bottom")},
                    point);
    for (const platform::Point place : {platform::Point{91, 90}, {160, 46}, {160, 134}})
        scene.view().objectPickTestForPixelAtX(static_cast<int>(place.x),
                                               static_cast<int>(place.y));
    EXPECT_THAT(selections.take(),
                ElementsAre(Selection{"left", 0, true}, Selection{"top", 1, true},
                            Selection{"bottom", 2, true}));
    scene.view().objectPickTestForPixelAtX(319, 179);
    scene.view().objectPickTestForPixelAtX(229, 90);
    EXPECT_THAT(selections.take(), IsEmpty());
    scene.advance(0.4);
    EXPECT_THAT(selections.take(), ElementsAre(Selection{"left", 0, false})) << "by a gaze";
}

TEST_P(AtAScale, FindsAMarkersEdgeWhereItIsSeen) {
    HotSpotScene scene({320, 180}, GetParam());
    SelectionListener selections;
    scene.showSpots({spotAt(0, 0)});
    const int last = lastColumnHit(scene, selections);
    const auto picture = scene.snapshot();
    const auto isSeen = [&](int x) {
        const auto column = static_cast<int>(std::floor(x * GetParam()));
        return colourAt(*picture, column, static_cast<int>(90 * GetParam()))[0] == 255;
    };
    EXPECT_TRUE(isSeen(last));
    EXPECT_FALSE(isSeen(last + 1));
}

INSTANTIATE_TEST_SUITE_P(Scales, AtAScale, ::testing::Values(0.5, 1.0, 1.5, 2.0, 3.0),
                         [](const auto& scale) {
                             return "of" + std::to_string(static_cast<int>(scale.param * 10)) +
                                    "Tenths";
                         });
