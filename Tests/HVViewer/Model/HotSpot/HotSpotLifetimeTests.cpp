#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Hosts/Headless/SurfacelessContext.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

namespace {

/// How many names of each kind the context knows.
struct GLObjects {
    int textures = 0;
    int buffers = 0;
    int programs = 0;
    int shaders = 0;
    int framebuffers = 0;
    int vertexArrays = 0;
    friend bool operator==(const GLObjects&, const GLObjects&) = default;
};

GLObjects countObjects() {
    static const auto isVertexArray = reinterpret_cast<GLboolean (*)(GLuint)>(
        zanto::SurfacelessContext::procAddress("glIsVertexArrayOES"));
    constexpr GLuint kHighestName = 5000;
    GLObjects objects;
    for (GLuint name = 1; name < kHighestName; ++name) {
        objects.textures += glIsTexture(name);
        objects.buffers += glIsBuffer(name);
        objects.programs += glIsProgram(name);
        objects.shaders += glIsShader(name);
        objects.framebuffers += glIsFramebuffer(name);
        objects.vertexArrays += isVertexArray(name);
    }
    return objects;
}

} // namespace

TEST(HotSpotLifetime, LeavesNoGLObjectButOneBufferADrawer) {
    HotSpotScene scene;
    scene.controller().setEnableHotSpotAutoPicking(true);
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    const auto cycle = [&] {
        scene.showSpots({spotAt(0, 0), spotAt(0, 0.3F), spotAt(0.2F, 0)}, point);
        scene.view().objectPickTestForPixelAtX(160, 90);
        scene.drawer().updateHotSpots({spotAt(0, 0.1F)});
        scene.advance(1);
        scene.showSpots({});
    };
    cycle();
    const GLObjects before = countObjects();
    constexpr int kCycles = 10;
    for (int i = 0; i < kCycles; ++i)
        cycle();
    GLObjects expected = before;
    expected.buffers += 2 * kCycles; // each cycle makes two drawers
    EXPECT_EQ(countObjects(), expected);
}

TEST(HotSpotLifetime, MayHaveItsListReplacedWhileAPickIsReported) {
    HotSpotScene scene;
    SelectionListener selections;
    scene.showSpots({spotAt(0, 2), spotAt(0, 0, "door")});
    const WhenPosted meddler(ZNTHotSpotDrawerDetectHotSpotSelection,
                             [&scene] { scene.drawer().updateHotSpots({spotAt(0, 1)}); });
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_EQ(selections.take(), (std::vector<Selection>{{"door", 1, true}}));
    EXPECT_EQ(scene.drawer().hotSpots().size(), 1U);
}

TEST(HotSpotLifetime, MayEndWhileAPickIsReported) {
    HotSpotScene scene;
    SelectionListener selections;
    scene.showSpots({spotAt(0, 0, "door")},
                    ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
    const WhenPosted meddler(ZNTHotSpotDrawerDetectHotSpotSelection,
                             [&scene] { scene.showSpots({}); });
    scene.drawer().objecPickTestForPickingPoint();
    scene.advance(1);
    EXPECT_EQ(selections.take(), (std::vector<Selection>{{"door", 0, false}}));
    EXPECT_TRUE(scene.drawer().hotSpots().empty());
}

TEST(HotSpotLifetime, MayEndWithItsTimerArmed) {
    auto scene = std::make_unique<HotSpotScene>();
    scene->controller().setEnableHotSpotAutoPicking(true);
    scene->showSpots({spotAt(0, 0)}, ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
    ASSERT_TRUE(scene->drawer().isPickingAutomatically());
    const std::weak_ptr<ZNTHotSpotDrawer> drawer = scene->view().glDrawer()->hotSpotGLDrawer();
    scene->releaseController();
    scene->host().settle();
    EXPECT_TRUE(drawer.expired());
    scene->advance(2);
    scene.reset();
}
