#include "Hosts/Embedded/EmbeddedHost.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/TextureLoader.h"
#include "Tests/Hosts/EmbeddedScene.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace platform;

namespace {

using Events = std::vector<std::string>;

std::unique_ptr<zanto::SurfacelessContext> makeContext() {
    auto context = zanto::SurfacelessContext::create();
    return std::move(context).value();
}

zanto::EmbeddedHostOptions optionsOf(const zanto::SurfacelessContext& context) {
    zanto::EmbeddedHostOptions options;
    options.gl = bindingsOf(context);
    options.size = {16, 12};
    return options;
}

void expectRefused(zanto::EmbeddedHostOptions options, const std::string& cause) {
    const LogRecorder log;
    const auto host = zanto::EmbeddedHost::create(std::move(options));
    ASSERT_FALSE(host.ok());
    EXPECT_EQ(host.error().code, ErrorCode::Unavailable);
    EXPECT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.count(cause), 1);
}

} // namespace

TEST(EmbeddedHost, SetsScreenAndOrientation) {
    const auto context = makeContext();
    zanto::EmbeddedHostOptions options = optionsOf(*context);
    options.scale = 2;
    const auto host = zanto::EmbeddedHost::create(std::move(options));
    ASSERT_TRUE(host.ok());
    EXPECT_EQ(Screen::mainScreen().bounds(), (Rect{{}, {16, 12}}));
    EXPECT_EQ(Screen::mainScreen().scale(), 2.0);
    EXPECT_EQ(static_cast<int>(Application::sharedApplication().statusBarOrientation()), 3);
    EXPECT_NE(Application::sharedApplication().keyWindow(), nullptr);
}

TEST(EmbeddedHost, LimitsPicturesToWhatItsContextHolds) {
    const EmbeddedScene scene;
    EXPECT_EQ(Image::decodeLimits().maxSidePx, GLDevice::main().maxTextureSidePx());
}

TEST(EmbeddedHost, KeepsALowerLimitOfTheApplications) {
    const DecodeLimits before = Image::decodeLimits();
    Image::setDecodeLimits({.maxSidePx = 100});
    {
        const EmbeddedScene scene;
        EXPECT_EQ(Image::decodeLimits().maxSidePx, 100);
    }
    Image::setDecodeLimits(before);
}

TEST(EmbeddedHost, RunsOnTheMachinesClockUnlessGivenAnother) {
    const auto context = makeContext();
    const auto host = zanto::EmbeddedHost::create(optionsOf(*context));
    ASSERT_TRUE(host.ok());
    const Instant first = host.value()->now();
    EXPECT_GE(first, Instant(0));
    while (host.value()->now() == first) {
    }
    EXPECT_GT(MainQueue::main().now(), first);
}

TEST(EmbeddedHost, IsRefusedWithoutACurrentContext) {
    zanto::EmbeddedHostOptions options;
    options.gl.procAddress = zanto::SurfacelessContext::procAddress;
    expectRefused(std::move(options), "not OpenGL ES 2.0");
}

TEST(EmbeddedHost, IsRefusedWithoutVertexArrayObjects) {
    const auto context = makeContext();
    zanto::EmbeddedHostOptions options = optionsOf(*context);
    options.gl.procAddress = [](const char*) -> void* { return nullptr; };
    expectRefused(std::move(options), "OES_vertex_array_object");
    zanto::EmbeddedHostOptions without = optionsOf(*context);
    without.gl.procAddress = nullptr;
    expectRefused(std::move(without), "OES_vertex_array_object");
}

TEST(EmbeddedHost, IsCreatedAfterOneThatWasRefused) {
    { expectRefused({}, "not OpenGL ES 2.0"); }
    EmbeddedScene scene;
    scene.host().appear();
    EXPECT_TRUE(scene.turn());
}

TEST(EmbeddedHost, IsCreatedAgainAfterTheFirstIsGone) {
    for (int i = 0; i < 3; ++i) {
        EmbeddedScene scene;
        scene.host().appear();
        EXPECT_TRUE(scene.turn());
        EXPECT_EQ(scene.painter().drawings, 1);
    }
}

TEST(EmbeddedHost, TellsTheControllerOfItsAppearances) {
    EmbeddedScene scene;
    scene.host().appear();
    scene.host().disappear();
    EXPECT_EQ(scene.controller().events,
              (Events{"did load", "will appear", "did appear", "will disappear", "did disappear"}));
}

TEST(EmbeddedHost, TakesTheControllerOutAtItsEnd) {
    EmbeddedScene scene;
    scene.host().appear();
    scene.controller().events.clear();
    scene.endHost();
    EXPECT_EQ(scene.controller().events, (Events{"will disappear", "did disappear"}));
    EXPECT_EQ(scene.controller().view()->window(), nullptr);
    EXPECT_EQ(Application::sharedApplication().keyWindow(), nullptr);
}

TEST(EmbeddedHost, TakesAControllerOutForNull) {
    EmbeddedScene scene;
    scene.host().appear();
    scene.turn();
    scene.host().setRootViewController(nullptr);
    scene.host().appear();
    EXPECT_FALSE(scene.ask().drawNow);
    EXPECT_FALSE(scene.host().snapshot(1).ok());
}

TEST(EmbeddedHost, DropsItsBlocksAtItsEnd) {
    int runs = 0;
    {
        const EmbeddedScene scene;
        MainQueue::main().async([&] { ++runs; });
        MainQueue::main().asyncAfter(Instant(1), [&] { ++runs; });
    }
    EmbeddedScene scene;
    scene.jumpTo(fromSeconds(1));
    scene.ask();
    EXPECT_EQ(runs, 0);
}

TEST(EmbeddedHost, RunsInItsFirstTurnWhatWasQueuedBeforeIt) {
    int runs = 0;
    MainQueue::main().async([&] { ++runs; });
    EmbeddedScene scene;
    scene.ask();
    EXPECT_EQ(runs, 1);
}

TEST(EmbeddedHost, DoesNoHarmByGLObjectsThatOutliveIt) {
    std::vector<std::shared_ptr<TextureInfo>> textures;
    std::shared_ptr<GLContext> handle;
    std::unique_ptr<PaintedView> painted;
    {
        const EmbeddedScene scene;
        handle = GLContext::create();
        ASSERT_TRUE(GLContext::setCurrentContext(handle));
        for (int i = 0; i < 2; ++i)
            textures.push_back(TextureLoader::transparentTexture(handle));
        painted = std::make_unique<PaintedView>(Rect{{}, {4, 4}}, kRedColor);
    }
    textures.pop_back(); // while there is no context at all
    {
        EmbeddedScene scene;
        scene.controller().view()->addSubview(painted->view);
        scene.host().appear();
        EXPECT_TRUE(scene.turn());
        EXPECT_EQ(painted->painter->drawings, 0) << "its context is the old one's";
        textures.pop_back();
        painted.reset();
        handle.reset();
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }
}

TEST(HostSnapshot, ShowsTheWindowAtItsScale) {
    EmbeddedScene scene;
    const auto picture = scene.host().snapshot(3);
    ASSERT_TRUE(picture.ok());
    EXPECT_EQ(picture.value()->widthPx(), 48);
    EXPECT_EQ(picture.value()->heightPx(), 36);
    EXPECT_EQ(colourAt(*picture.value(), 6, 9)[0], 255);
    EXPECT_EQ(colourAt(*picture.value(), 5, 9)[0], 0);
}

TEST(HostSnapshot, IsNoPass) {
    EmbeddedScene scene;
    scene.host().appear();
    ASSERT_TRUE(scene.host().snapshot(1).ok());
    EXPECT_TRUE(scene.turn());
}
