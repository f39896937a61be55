#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Platform/Foundation/Bundle.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/TextureLoader.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Platform/Interface/Application.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <utility>

using platform::InterfaceOrientation;

namespace {

std::shared_ptr<ZNTHotSpot> spot(float vertical, float horizontal) {
    return ZNTHotSpot::hotSpotWithTextureNamed("", vertical, horizontal);
}

std::array<double, 3> placed(const ZNTHotSpot& hotSpot, float x, float y) {
    const GLKVector4 p = GLKMatrix4MultiplyVector4(hotSpot.hotSpotModelViewProjectionMatrix(),
                                                   GLKVector4Make(x, y, 0, 1));
    return {p.v[0], p.v[1], p.v[2]};
}

void expectNear(const std::array<double, 3>& actual, const std::array<double, 3>& expected) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-6) << "coordinate " << i;
}

/// The application's bundle with one folder of pictures.
class NamedPictures {
public:
    NamedPictures() { platform::Bundle::application().addFolder(folder_.path()); }
    ~NamedPictures() { platform::Bundle::application().removeFolder(folder_.path()); }
    NamedPictures(const NamedPictures&) = delete;
    NamedPictures& operator=(const NamedPictures&) = delete;

    void add(const std::string& file, int sidePx) {
        const auto png = platform::encodePng(*flatPicture(sidePx, sidePx, 255, 255, 255));
        (void)folder_.add(file, png.value());
    }
    void addBroken(const std::string& file) {
        (void)folder_.add(file, std::array<std::uint8_t, 3>{1, 2, 3});
    }

private:
    tests::TemporaryFolder folder_;
};

} // namespace

TEST(HotSpot, IsMadeWithTheFactorysDefaults) {
    const auto named = ZNTHotSpot::hotSpotWithTextureNamed("door", 0.1F, 0.2F);
    EXPECT_EQ(named->textureImageName(), "door");
    EXPECT_EQ(named->verticalOffset(), 0.1F);
    EXPECT_EQ(named->horizontalOffset(), 0.2F);
    EXPECT_EQ(named->scale(), 1.0F);
    EXPECT_EQ(named->xTransform(), 1.0F);
    EXPECT_EQ(named->yTransform(), 1.0F);
    EXPECT_EQ(named->selectionScale(), 0.0);
    EXPECT_EQ(named->textureName(), 0U);
    EXPECT_TRUE(named->hotSpotName().empty());
    const auto picture = flatPicture(2, 2, 1, 2, 3);
    const auto given = ZNTHotSpot::hotSpotWithTextureImage(picture, 0.3F, 0.4F);
    EXPECT_EQ(given->textureImageName(), "");
    EXPECT_EQ(given->textureImage(), picture);
    EXPECT_EQ(given->verticalOffset(), 0.3F);
}

TEST(HotSpot, HasTwoNamesForEachAngle) {
    const auto hotSpot = spot(0, 0);
    hotSpot->setAngleH(0.5F);
    hotSpot->setAngleV(0.25F);
    EXPECT_EQ(hotSpot->horizontalOffset(), 0.5F);
    EXPECT_EQ(hotSpot->verticalOffset(), 0.25F);
    hotSpot->setHorizontalOffset(0.75F);
    EXPECT_EQ(hotSpot->angleH(), 0.75F);
}

TEST(HotSpot, StandsStraightAheadFacingTheMiddle) {
    const auto hotSpot = spot(0, 0);
    hotSpot->updateWithModelViewProjection(GLKMatrix4Identity);
    expectNear(placed(*hotSpot, 0, 0), {0, 1, 0});
    expectNear(placed(*hotSpot, 0.5F, 0), {0.1, 1, 0});
    expectNear(placed(*hotSpot, 0, 0.5F), {0, 1, 0.1});
}

TEST(HotSpot, LiesToTheLeftForPositiveHorizontalAndLowerForPositiveVertical) {
    const auto left = spot(0, 0.5F);
    left->updateWithModelViewProjection(GLKMatrix4Identity);
    expectNear(placed(*left, 0, 0), {-std::sin(0.5), std::cos(0.5), 0});
    const auto low = spot(0.5F, 0);
    low->updateWithModelViewProjection(GLKMatrix4Identity);
    expectNear(placed(*low, 0, 0), {0, std::cos(0.5), -std::sin(0.5)});
}

TEST(HotSpot, IsStretchedAfterItsScale) {
    const auto hotSpot = spot(0, 0);
    hotSpot->setScale(2);
    hotSpot->setXTransform(1.5F);
    hotSpot->setYTransform(0.5F);
    hotSpot->updateWithModelViewProjection(GLKMatrix4Identity);
    expectNear(placed(*hotSpot, 1, 0), {0.6, 1, 0});
    expectNear(placed(*hotSpot, 0, 1), {0, 1, 0.2});
}

TEST(HotSpot, HasNoTextureWithoutAPicture) {
    const auto host = makeHost({320, 180});
    const auto context = platform::GLContext::create();
    ASSERT_TRUE(platform::GLContext::setCurrentContext(context));
    for (const auto& hotSpot : {spot(0, 0), ZNTHotSpot::hotSpotWithTextureNamed("none", 0, 0)}) {
        LogRecorder log;
        EXPECT_FALSE(hotSpot->setupTexture());
        EXPECT_EQ(log.lines(),
                  std::vector<std::string>{"Error - cant setup texture for hotSpot, nill image"});
        hotSpot->removeSpotTexture();
        EXPECT_EQ(hotSpot->textureName(), 0U);
    }
}

TEST(HotSpot, ReplacesItsTextureAndForgetsItsName) {
    const auto host = makeHost({320, 180});
    const auto context = platform::GLContext::create();
    ASSERT_TRUE(platform::GLContext::setCurrentContext(context));
    const auto hotSpot = ZNTHotSpot::hotSpotWithTextureImage(flatPicture(4, 4, 9, 9, 9), 0, 0);
    EXPECT_TRUE(hotSpot->setupTexture());
    const auto first = hotSpot->texture();
    hotSpot->setTextureImage(flatPicture(4, 4, 8, 8, 8));
    EXPECT_TRUE(hotSpot->setupTexture());
    EXPECT_EQ(first.use_count(), 1) << "the hot spot holds the second one";
    EXPECT_NE(hotSpot->textureName(), 0U);
    hotSpot->removeSpotTexture();
    EXPECT_EQ(hotSpot->textureName(), 0U);
}

TEST(HotSpot, GoesByItsNameAloneWhereItHasOne) {
    const LogRecorder log;
    const auto host = makeHost({320, 180});
    ASSERT_TRUE(platform::GLContext::setCurrentContext(platform::GLContext::create()));
    const auto spot = ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 255, 0, 0), 0.0F, 0.0F);
    spot->setTextureImageName("no-such-picture");
    EXPECT_FALSE(spot->setupTexture());
    EXPECT_EQ(log.count("nill image"), 1);
}

TEST(HotSpot, FacesTheMiddleWhereverItStands) {
    for (const auto& [vertical, horizontal] :
         {std::pair(0.4F, 0.9F), std::pair(-1.1F, 2.5F), std::pair(1.5F, -3.0F)}) {
        const auto spot = ZNTHotSpot::hotSpotWithTextureNamed("", vertical, horizontal);
        spot->setXTransform(3);
        spot->setYTransform(0.5F);
        spot->updateWithModelViewProjection(GLKMatrix4Identity);
        const GLKMatrix4 matrix = spot->hotSpotModelViewProjectionMatrix();
        const auto column = [&matrix](int i) {
            return std::array{matrix.m[4 * i], matrix.m[4 * i + 1], matrix.m[4 * i + 2]};
        };
        const auto dot = [](const auto& a, const auto& b) {
            return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
        };
        const auto middle = column(3);
        EXPECT_NEAR(dot(middle, middle), 1, 1e-6) << "on the unit sphere";
        EXPECT_NEAR(dot(column(0), middle), 0, 1e-6) << "across the line of sight";
        EXPECT_NEAR(dot(column(1), middle), 0, 1e-6);
        EXPECT_NEAR(std::sqrt(dot(column(0), column(0))), 0.6, 1e-6);
        EXPECT_NEAR(std::sqrt(dot(column(1), column(1))), 0.1, 1e-6);
        EXPECT_NEAR(std::sqrt(dot(column(2), column(2))), 0.2, 1e-6) << "unstretched in depth";
    }
}

TEST(HotSpot, TakesItsTiltAndItsSizeInDoubles) {
    for (int i = -100; i <= 100; ++i) {
        const float angle = 0.0157F * static_cast<float>(i);
        const float scale = 0.037F * static_cast<float>(i);
        const auto hotSpot = spot(angle, 0.3F);
        hotSpot->setScale(scale);
        hotSpot->updateWithModelViewProjection(GLKMatrix4Identity);
        const float theta = std::numbers::pi_v<float> / 2 + angle;
        const float phi = std::numbers::pi_v<float> / 2 + 0.3F;
        GLKMatrix4 expected =
            GLKMatrix4Translate(GLKMatrix4Identity, std::sin(theta) * std::cos(phi),
                                std::sin(theta) * std::sin(phi), std::cos(theta));
        expected = GLKMatrix4Rotate(expected, 0.3F, 0, 0, 1);
        expected = GLKMatrix4Rotate(
            expected, static_cast<float>(std::numbers::pi / 2 - double{angle}), 1, 0, 0);
        const auto size = static_cast<float>(double{scale} * 0.2);
        expected = GLKMatrix4Scale(expected, size, size, size);
        const GLKMatrix4 actual = hotSpot->hotSpotModelViewProjectionMatrix();
        for (std::size_t element = 0; element < 16; ++element)
            ASSERT_EQ(actual.m[element], expected.m[element]) << i << " at " << element;
    }
}

TEST(HotSpot, HasNoPlaceBeforeItsFirstFrame) {
    const auto hotSpot = spot(0.5F, 0.5F);
    for (const float element : hotSpot->hotSpotModelViewProjectionMatrix().m)
        EXPECT_EQ(element, 0);
}

TEST(HotSpot, KeepsWhatTheHostStoresInIt) {
    const auto hotSpot = spot(0, 0);
    hotSpot->setSelectionScale(1.25);
    hotSpot->setIndexID(7);
    hotSpot->setHotSpotName("door");
    EXPECT_EQ(hotSpot->selectionScale(), 1.25);
    EXPECT_EQ(hotSpot->indexID(), 7U);
    EXPECT_EQ(hotSpot->hotSpotName(), "door");
    hotSpot->updateWithModelViewProjection(GLKMatrix4Identity);
    const GLKMatrix4 before = hotSpot->hotSpotModelViewProjectionMatrix();
    hotSpot->setSelectionScale(9);
    hotSpot->updateWithModelViewProjection(GLKMatrix4Identity);
    EXPECT_EQ(hotSpot->hotSpotModelViewProjectionMatrix().m[0], before.m[0]) << "nothing reads it";
}

TEST(HotSpot, IsPlacedInFrontOfTheSceneMatrix) {
    const auto hotSpot = spot(0.2F, -0.4F);
    hotSpot->updateWithModelViewProjection(GLKMatrix4Identity);
    const auto alone = placed(*hotSpot, 0.5F, 0.5F);
    const GLKMatrix4 scene = GLKMatrix4Translate(GLKMatrix4Identity, 1, 2, 3);
    hotSpot->updateWithModelViewProjection(scene);
    expectNear(placed(*hotSpot, 0.5F, 0.5F), {alone[0] + 1, alone[1] + 2, alone[2] + 3});
}

TEST(NamedPicture, IsFoundWithAndWithoutItsEnding) {
    const auto host = makeHost({320, 180});
    const auto context = platform::GLContext::create();
    ASSERT_TRUE(platform::GLContext::setCurrentContext(context));
    NamedPictures pictures;
    pictures.add("door.png", 4);
    for (const char* name : {"door", "door.png"})
        EXPECT_TRUE(ZNTHotSpot::hotSpotWithTextureNamed(name, 0, 0)->setupTexture()) << name;
}

TEST(NamedPicture, MayHaveADotInItsName) {
    const auto host = makeHost({320, 180});
    const auto context = platform::GLContext::create();
    ASSERT_TRUE(platform::GLContext::setCurrentContext(context));
    NamedPictures pictures;
    pictures.add("arrow.left.png", 4);
    for (const char* name : {"arrow.left", "arrow.left.png"})
        EXPECT_TRUE(ZNTHotSpot::hotSpotWithTextureNamed(name, 0, 0)->setupTexture()) << name;
}

TEST(NamedPicture, IsTheOneForTheScreensScale) {
    NamedPictures pictures;
    pictures.add("icon.png", 4);
    pictures.add("icon@2x.png", 8);
    pictures.add("icon@3x.png", 12);
    pictures.add("dense@3x.png", 12);
    pictures.add("coarse.png", 4);
    const auto sideOf = [](const char* name) {
        const auto hotSpot = ZNTHotSpot::hotSpotWithTextureNamed(name, 0, 0);
        return hotSpot->setupTexture() ? hotSpot->texture()->size().width : 0;
    };
    for (const auto& [scale, side] :
         {std::pair{1.0, 4}, {1.5, 8}, {2.0, 8}, {3.0, 12}, {4.0, 12}}) {
        const auto host = makeHost({320, 180}, scale);
        const auto context = platform::GLContext::create();
        ASSERT_TRUE(platform::GLContext::setCurrentContext(context));
        EXPECT_EQ(sideOf("icon"), side) << scale;
        EXPECT_EQ(sideOf("icon.png"), side) << scale;
        EXPECT_EQ(sideOf("dense"), 12) << scale;
        EXPECT_EQ(sideOf("coarse"), 4) << scale;
    }
}

TEST(NamedPicture, ThatIsBrokenIsNamed) {
    const auto host = makeHost({320, 180});
    NamedPictures pictures;
    pictures.addBroken("torn.png");
    LogRecorder log;
    EXPECT_FALSE(ZNTHotSpot::hotSpotWithTextureNamed("torn", 0, 0)->setupTexture());
    ASSERT_EQ(log.lines().size(), 2U);
    EXPECT_EQ(log.lines()[0].find("torn.png: "), 0U);
    EXPECT_EQ(log.lines()[1], "Error - cant setup texture for hotSpot, nill image");
}

TEST(PickingPoint, LiesAtItsFractionOfTheScreen) {
    const auto host = makeHost({375, 667});
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    EXPECT_EQ(point->rejectRate(), 1);
    EXPECT_FALSE(point->sbsModeActive());
    EXPECT_EQ(point->xPosition(), 187.5);
    EXPECT_EQ(point->yPosition(), 333.5);
    point->setXPosition(1);
    point->setYPosition(1);
    EXPECT_EQ(point->xPosition(), 187.5) << "what is set is never read back";
    EXPECT_EQ(point->yPosition(), 333.5);
}

TEST(PickingPoint, LiesInTheLeftHalfSideBySide) {
    const auto host = makeHost({667, 375});
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    point->markSBSModeActive(true);
    EXPECT_EQ(point->xPosition(), 166.75);
    EXPECT_EQ(point->yPosition(), 187.5);
}

TEST(PickingPoint, GoesByHowTheScreenIsHeld) {
    for (const platform::Size size : {platform::Size{667, 375}, {375, 667}}) {
        const auto host = makeHost(size);
        const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(1, 1);
        using Held = InterfaceOrientation;
        for (const auto orientation : {Held::Portrait, Held::PortraitUpsideDown}) {
            host->embedded().setOrientation(orientation);
            EXPECT_EQ(point->xPosition(), 375);
            EXPECT_EQ(point->yPosition(), 667);
        }
        for (const auto orientation : {Held::LandscapeRight, Held::LandscapeLeft}) {
            host->embedded().setOrientation(orientation);
            EXPECT_EQ(point->xPosition(), 667);
            EXPECT_EQ(point->yPosition(), 375);
        }
    }
}

TEST(PickingPoint, IsInPointsWhateverTheScreensScale) {
    const auto host = makeHost({375, 667}, 2);
    const ZNTHotSpotPickingPoint point(0.5, 0.25);
    EXPECT_EQ(point.hKoef(), 0.5);
    EXPECT_EQ(point.vKoef(), 0.25);
    EXPECT_EQ(point.rejectRate(), 1);
    EXPECT_FALSE(point.sbsModeActive());
    EXPECT_EQ(point.xPosition(), 187.5);
    EXPECT_EQ(point.yPosition(), 166.75);
}
