#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/TextureLoader.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace platform;

namespace {

/// A host, a loader and what it completed with.
struct Scene {
    [[nodiscard]] TextureLoader::Completion keep() {
        return [this](TextureLoader::Upload upload) {
            textures.push_back(std::move(upload.texture));
            errors.push_back(upload.glError);
            contextWasGone.push_back(upload.contextIsGone);
        };
    }
    void load(const ImagePtr& image) {
        loader.textureWithImage(image, keep());
        host->settle();
    }

    std::unique_ptr<zanto::HeadlessHost> host = makeHost({4, 4});
    TextureLoader loader{GLContext::create()};
    std::vector<std::shared_ptr<TextureInfo>> textures;
    std::vector<std::uint32_t> errors;
    std::vector<bool> contextWasGone;
};

/// Every pixel another colour.
ImagePtr gradient(int widthPx, int heightPx) {
    PixelStorage pixels(widthPx, heightPx);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels.bytes[i] = static_cast<std::uint8_t>(i * 7);
    return std::make_shared<Image>(std::move(pixels));
}

/// The texture's bytes, the row at v = 0 first.
std::vector<std::uint8_t> bytesOf(const TextureInfo& texture) {
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture.name(), 0);
    const SizePx size = texture.size();
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size.width * size.height) * 4);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, size.width, size.height, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
    glDeleteFramebuffers(1, &framebuffer);
    return bytes;
}

GLint parameterOf(const TextureInfo& texture, GLenum name) {
    GLint value = 0;
    glBindTexture(GL_TEXTURE_2D, texture.name());
    glGetTexParameteriv(GL_TEXTURE_2D, name, &value);
    return value;
}

} // namespace

TEST(TextureLoader, CompletesInALaterTurnWithTheTexture) {
    Scene scene;
    scene.loader.textureWithImage(gradient(3, 2), scene.keep());
    EXPECT_TRUE(scene.textures.empty());
    EXPECT_EQ(MainQueue::main().outstandingWork(), 1);
    scene.host->settle();
    ASSERT_EQ(scene.textures.size(), 1U);
    ASSERT_NE(scene.textures[0], nullptr);
    EXPECT_NE(scene.textures[0]->name(), 0U);
    EXPECT_EQ(scene.textures[0]->size(), (SizePx{3, 2}));
    EXPECT_EQ(scene.errors[0], 0U);
    EXPECT_EQ(MainQueue::main().outstandingWork(), 0);
}

TEST(TextureLoader, PutsThePicturesFirstRowAtTheBeginning) {
    Scene scene;
    const ImagePtr image = gradient(3, 5);
    scene.load(image);
    const auto pixels = image->pixels();
    EXPECT_EQ(bytesOf(*scene.textures.at(0)),
              std::vector<std::uint8_t>(pixels.begin(), pixels.end()));
}

TEST(TextureLoader, FiltersLinearlyAndClampsToTheEdge) {
    Scene scene;
    scene.load(gradient(3, 2));
    const TextureInfo& texture = *scene.textures.at(0);
    EXPECT_EQ(parameterOf(texture, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(parameterOf(texture, GL_TEXTURE_MAG_FILTER), GL_LINEAR);
    EXPECT_EQ(parameterOf(texture, GL_TEXTURE_WRAP_S), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(parameterOf(texture, GL_TEXTURE_WRAP_T), GL_CLAMP_TO_EDGE);
}

TEST(TextureLoader, MakesOneTextureOfAPictureForEveryLoader) {
    Scene scene;
    TextureLoader other(GLContext::create());
    const ImagePtr image = gradient(3, 2);
    scene.loader.textureWithImage(image, scene.keep());
    other.textureWithImage(image, scene.keep());
    scene.host->settle();
    ASSERT_EQ(scene.textures.size(), 2U);
    EXPECT_EQ(scene.textures[0], scene.textures[1]);
}

TEST(TextureLoader, MakesAnotherTextureOfAnotherPicture) {
    Scene scene;
    scene.load(gradient(3, 2));
    scene.load(gradient(3, 2));
    ASSERT_EQ(scene.textures.size(), 2U);
    EXPECT_NE(scene.textures[0]->name(), scene.textures[1]->name());
}

TEST(TextureLoader, UploadsAgainOnceTheTextureIsGone) {
    Scene scene;
    const ImagePtr image = gradient(3, 2);
    scene.load(image);
    scene.textures.clear();
    scene.load(image);
    ASSERT_EQ(scene.textures.size(), 1U);
    EXPECT_EQ(glIsTexture(scene.textures[0]->name()), GL_TRUE);
}

TEST(TextureLoader, CompletesEvenWhenItIsGone) {
    Scene scene;
    std::make_unique<TextureLoader>(GLContext::create())
        ->textureWithImage(gradient(3, 2), scene.keep());
    scene.host->settle();
    ASSERT_EQ(scene.textures.size(), 1U);
    EXPECT_NE(scene.textures[0], nullptr);
}

TEST(TextureLoader, ScalesDownWhatTheContextCannotHoldAndSaysSo) {
    Scene scene;
    const int limit = GLDevice::main().maxTextureSidePx();
    const LogRecorder log;
    scene.load(flatPicture(limit + 1, 2, 10, 20, 30));
    ASSERT_NE(scene.textures.at(0), nullptr);
    EXPECT_EQ(scene.textures[0]->size().width, limit);
    EXPECT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.count("scaled down from " + std::to_string(limit + 1) + " x 2"), 1);
}

TEST(TextureLoader, TakesNoErrorOfAnotherForItsOwn) {
    Scene scene;
    glEnable(GL_TEXTURE0); // no capability: an error stays behind
    scene.load(gradient(3, 2));
    EXPECT_NE(scene.textures.at(0), nullptr);
    EXPECT_EQ(scene.errors.at(0), 0U);
}

TEST(TextureLoader, HasNothingOnceItsContextIsGone) {
    Scene scene;
    scene.host.reset();
    scene.host = makeHost({4, 4});
    scene.load(gradient(3, 2));
    ASSERT_EQ(scene.textures.size(), 1U);
    EXPECT_EQ(scene.textures[0], nullptr);
    EXPECT_EQ(scene.errors[0], 0U);
    EXPECT_TRUE(scene.contextWasGone[0]);
}

TEST(TextureLoader, TellsAPictureWithoutPixelsFromALostContext) {
    Scene scene;
    const auto image =
        std::make_shared<Image>(PixelStorage(3, 2), [] { return std::optional<PixelStorage>(); });
    image->giveBackPixels();
    scene.load(image);
    scene.load(nullptr);
    ASSERT_EQ(scene.textures.size(), 2U);
    for (const std::size_t i : {0U, 1U}) {
        EXPECT_EQ(scene.textures[i], nullptr);
        EXPECT_EQ(scene.errors[i], 0U);
        EXPECT_FALSE(scene.contextWasGone[i]);
    }
}

TEST(TextureLoader, UploadsAPictureAgainForTheNextHost) {
    Scene scene;
    const ImagePtr image = gradient(3, 2);
    scene.load(image);
    scene.host.reset();
    scene.host = makeHost({4, 4});
    scene.loader = TextureLoader(GLContext::create());
    scene.load(image);
    ASSERT_EQ(scene.textures.size(), 2U);
    EXPECT_NE(scene.textures[0], scene.textures[1]);
    EXPECT_EQ(glIsTexture(scene.textures[1]->name()), GL_TRUE);
}

TEST(TextureInfo, IsDeletedWithItsLastHolder) {
    Scene scene;
    scene.load(gradient(3, 2));
    const GLuint name = scene.textures.at(0)->name();
    auto copy = scene.textures[0];
    scene.textures.clear();
    EXPECT_EQ(glIsTexture(name), GL_TRUE);
    copy.reset();
    EXPECT_EQ(glIsTexture(name), GL_FALSE);
}

TEST(TextureInfo, LeavesTheNextHostsTexturesAlone) {
    Scene scene;
    scene.load(gradient(3, 2));
    const GLuint name = scene.textures.at(0)->name();
    scene.host.reset();
    scene.host = makeHost({4, 4});
    // A fresh context gives the same names again.
    std::vector<GLuint> names(name);
    glGenTextures(static_cast<GLsizei>(names.size()), names.data());
    glBindTexture(GL_TEXTURE_2D, name);
    ASSERT_EQ(glIsTexture(name), GL_TRUE);
    scene.textures.clear();
    EXPECT_EQ(glIsTexture(name), GL_TRUE);
}

TEST(PremultipliedTexture, HoldsColoursTimesAlpha) {
    const Scene scene;
    const auto upload = TextureLoader::premultipliedTexture(GLContext::create(),
                                                            *flatPicture(1, 1, 200, 100, 0, 51));
    ASSERT_NE(upload.texture, nullptr);
    EXPECT_EQ(bytesOf(*upload.texture), (std::vector<std::uint8_t>{40, 20, 0, 51}));
}

TEST(PremultipliedTexture, IsScaledDownToWhatTheContextCanHoldWithALogLine) {
    const Scene scene;
    const int limit = GLDevice::main().maxTextureSidePx();
    const LogRecorder log;
    const auto upload = TextureLoader::premultipliedTexture(
        GLContext::create(), *flatPicture(2 * limit, 2, 200, 100, 0, 51));
    ASSERT_NE(upload.texture, nullptr);
    EXPECT_EQ(upload.texture->size(), (SizePx{limit, 1}));
    const auto bytes = bytesOf(*upload.texture);
    EXPECT_EQ((std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + 4)),
              (std::vector<std::uint8_t>{40, 20, 0, 51}));
    EXPECT_EQ(log.count("scaled down from " + std::to_string(2 * limit) + " x 2"), 1);
}

TEST(TransparentTexture, IsOneTransparentPixelAtOnce) {
    const Scene scene;
    const auto context = GLContext::create();
    const auto texture = TextureLoader::transparentTexture(context);
    ASSERT_NE(texture, nullptr);
    EXPECT_EQ(texture->size(), (SizePx{1, 1}));
    EXPECT_EQ(bytesOf(*texture), (std::vector<std::uint8_t>{0, 0, 0, 0}));
}
