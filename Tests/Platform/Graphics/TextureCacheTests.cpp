#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Platform/Graphics/TextureCache.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/VideoFrames.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <utility>
#include <vector>

using namespace platform;

namespace {

/// Every texel another value; even and odd columns differ, so that a shift by one byte shows.
PixelBufferPtr gradientFrame(SizePx size, int paddingBytes = 0) {
    return videoFrame(
        size,
        [](int x, int y) {
            return YCbCr{static_cast<std::uint8_t>(7 * x + 31 * y),
                         static_cast<std::uint8_t>(5 * x + 17 * y + 1),
                         static_cast<std::uint8_t>(200 - 3 * x - 11 * y)};
        },
        paddingBytes);
}

/// The bytes of a plane without padding: what its texture should hold.
std::vector<std::uint8_t> bytesOf(const PixelBuffer& buffer, int plane, SizePx size) {
    const int rowBytes = size.width * (plane + 1);
    std::vector<std::uint8_t> bytes;
    for (int y = 0; y < size.height; ++y) {
        const std::uint8_t* row = buffer.plane(plane).bytes +
                                  static_cast<std::ptrdiff_t>(y) * buffer.plane(plane).strideBytes;
        bytes.insert(bytes.end(), row, row + rowBytes);
    }
    return bytes;
}

GLuint makeCopyProgram() {
    constexpr const char* vertex = "attribute vec2 a_corner;"
                                   "varying highp vec2 v_place;"
                                   "void main() {"
                                   "  v_place = vec2(a_corner.x, 1.0 - a_corner.y);"
                                   "  gl_Position = vec4(a_corner * 2.0 - 1.0, 0.0, 1.0);"
                                   "}";
    constexpr const char* fragment =
        "precision highp float;"
        "uniform sampler2D u_texture;"
        "varying highp vec2 v_place;"
        "void main() { gl_FragColor = texture2D(u_texture, v_place); }";
    const GLuint program = glCreateProgram();
    for (const auto& [type, source] :
         {std::pair(GL_VERTEX_SHADER, vertex), std::pair(GL_FRAGMENT_SHADER, fragment)}) {
        const GLuint shader = glCreateShader(static_cast<GLenum>(type));
        glShaderSource(shader, 1, &source, nullptr);
        glCompileShader(shader);
        glAttachShader(program, shader);
    }
    glBindAttribLocation(program, 0, "a_corner");
    glLinkProgram(program);
    return program;
}

/// The texels, the row at v = 0 first: luminance, or luminance and alpha in turn. Such textures
/// cannot be read, so they are drawn, texel on pixel.
std::vector<std::uint8_t> texelsOf(const TextureInfo& texture, int plane) {
    const auto target = OffscreenTarget::create(texture.size());
    glViewport(0, 0, texture.size().width, texture.size().height);
    const GLuint program = makeCopyProgram();
    glUseProgram(program);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture.name());
    constexpr std::array<float, 8> corners{0, 0, 1, 0, 0, 1, 1, 1};
    GLuint buffer = 0;
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, sizeof corners, corners.data(), GL_STATIC_DRAW);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDeleteBuffers(1, &buffer);
    glDeleteProgram(program);
    const PixelStorage pixels = target.value()->readPixels();
    std::vector<std::uint8_t> texels;
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        texels.push_back(pixels.bytes[i]);
        if (plane == 1)
            texels.push_back(pixels.bytes[i + 3]);
    }
    return texels;
}

int liveTextures() {
    int count = 0;
    for (GLuint name = 1; name < 500; ++name)
        count += glIsTexture(name);
    return count;
}

/// What a view does with a frame: lets go of the earlier one, flushes, asks for both planes.
class Viewer {
public:
    explicit Viewer(const std::shared_ptr<GLContext>& context)
        : cache_(TextureCache::create(context).cache) {}

    void show(const PixelBufferPtr& buffer) {
        textures_ = {};
        cache_->flush();
        const SizePx size = buffer->size();
        textures_[0] = cache_->createTextureFromImage(buffer, 0, GL_LUMINANCE, size).texture;
        textures_[1] = cache_
                           ->createTextureFromImage(buffer, 1, GL_LUMINANCE_ALPHA,
                                                    {size.width / 2, size.height / 2})
                           .texture;
    }
    [[nodiscard]] const TextureInfo& texture(std::size_t plane) const { return *textures_[plane]; }
    [[nodiscard]] TextureCache& cache() { return *cache_; }

private:
    std::unique_ptr<TextureCache> cache_;
    std::array<std::shared_ptr<TextureInfo>, 2> textures_;
};

class TextureCacheTest : public ::testing::Test {
protected:
    void TearDown() override { GLDevice::main().setQuirks({}); }

    void expectTexels(const PixelBufferPtr& buffer) {
        Viewer viewer(context_);
        viewer.show(buffer);
        for (const int plane : {0, 1}) {
            const TextureInfo& texture = viewer.texture(static_cast<std::size_t>(plane));
            EXPECT_EQ(texelsOf(texture, plane), bytesOf(*buffer, plane, texture.size()))
                << "plane " << plane;
        }
    }
    /// How many planes an action uploads.
    [[nodiscard]] static std::uint64_t uploadsDuring(const auto& action) {
        const std::uint64_t before = TextureCache::uploadedPlanes();
        action();
        return TextureCache::uploadedPlanes() - before;
    }

    std::unique_ptr<zanto::HeadlessHost> host_ = makeHost({4, 4});
    std::shared_ptr<GLContext> context_ = GLContext::create();
};

} // namespace

TEST_F(TextureCacheTest, HoldsThePlanesWithTheFirstRowAtTheBeginning) {
    expectTexels(gradientFrame({8, 6}));
}

TEST_F(TextureCacheTest, HoldsThePlanesOfOddSizes) {
    expectTexels(gradientFrame({7, 5}));
}

TEST_F(TextureCacheTest, SkipsThePaddingBetweenRows) {
    ASSERT_TRUE(GLDevice::main().hasUnpackSubimage());
    expectTexels(gradientFrame({8, 6}, 24));
    GLint rowLength = -1;
    glGetIntegerv(0x0CF2, &rowLength);
    EXPECT_EQ(rowLength, 0) << "later uploads are without padding";
}

TEST_F(TextureCacheTest, CopiesRowsWhosePaddingCannotBeSkipped) {
    expectTexels(gradientFrame({8, 6}, 5)); // rows of Cb and Cr begin in the middle of a pair
    GLDevice::main().setQuirks({.copiesPaddedRows = true});
    expectTexels(gradientFrame({8, 6}, 24));
}

TEST_F(TextureCacheTest, FiltersLinearlyAndClampsToTheEdge) {
    Viewer viewer(context_);
    viewer.show(gradientFrame({8, 6}));
    glBindTexture(GL_TEXTURE_2D, viewer.texture(0).name());
    for (const auto& [name, expected] :
         {std::pair(GL_TEXTURE_MIN_FILTER, GL_LINEAR), std::pair(GL_TEXTURE_MAG_FILTER, GL_LINEAR),
          std::pair(GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE),
          std::pair(GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE)}) {
        GLint value = 0;
        glGetTexParameteriv(GL_TEXTURE_2D, static_cast<GLenum>(name), &value);
        EXPECT_EQ(value, expected);
    }
}

TEST_F(TextureCacheTest, BindsWhatItHandsOutToTheActiveUnit) {
    Viewer viewer(context_);
    const auto buffer = gradientFrame({8, 6});
    for (const char* what : {"uploaded", "found"}) {
        glActiveTexture(GL_TEXTURE3);
        glBindTexture(GL_TEXTURE_2D, 0);
        const auto plane =
            viewer.cache().createTextureFromImage(buffer, 0, GL_LUMINANCE, buffer->size());
        GLint bound = 0;
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        EXPECT_EQ(static_cast<GLuint>(bound), plane.texture->name()) << what;
    }
}

TEST_F(TextureCacheTest, UploadsAPlaneOnceForAllCaches) {
    Viewer one(context_);
    Viewer other(GLContext::create());
    const auto buffer = gradientFrame({8, 6});
    EXPECT_EQ(uploadsDuring([&] {
                  one.show(buffer);
                  other.show(buffer);
              }),
              2U);
    EXPECT_EQ(one.texture(0).name(), other.texture(0).name());
    EXPECT_EQ(one.texture(1).name(), other.texture(1).name());
}

TEST_F(TextureCacheTest, UploadsABufferOnceHoweverOftenItIsShown) {
    Viewer viewer(context_);
    const auto kept = gradientFrame({16, 8});
    viewer.show(kept);
    EXPECT_EQ(uploadsDuring([&] {
                  for (int i = 0; i < 5; ++i) {
                      viewer.show(gradientFrame({8, 6}));
                      viewer.show(kept);
                  }
              }),
              10U)
        << "only those of the others";
}

TEST_F(TextureCacheTest, TellsABufferFromALaterOneAtTheSamePlaceInMemory) {
    Viewer viewer(context_);
    for (const std::uint8_t luma : {std::uint8_t{40}, std::uint8_t{90}, std::uint8_t{200}}) {
        viewer.show(flatFrame({8, 6}, {luma, 128, 128}));
        EXPECT_EQ(texelsOf(viewer.texture(0), 0).front(), luma);
    }
}

TEST_F(TextureCacheTest, KeepsTwoSetsOfTexturesGoing) {
    const int before = liveTextures();
    Viewer viewer(context_);
    PixelBufferPtr last; // a player keeps its last frame until it has handed on the next one
    std::vector<GLuint> names;
    for (int i = 0; i < 20; ++i) {
        auto next = gradientFrame({8, 6});
        viewer.show(next);
        last = std::move(next);
        names.push_back(viewer.texture(0).name());
    }
    EXPECT_EQ(liveTextures() - before, 4);
    EXPECT_NE(names[19], names[18]) << "a frame is not written over the one on screen";
    EXPECT_EQ(names[19], names[17]);
}

TEST_F(TextureCacheTest, NeedsNoMoreForTwoViewsThanForOne) {
    const int before = liveTextures();
    Viewer left(context_);
    Viewer right(context_);
    PixelBufferPtr last;
    for (int i = 0; i < 20; ++i) {
        auto next = gradientFrame({8, 6});
        left.show(next);
        right.show(next);
        last = std::move(next);
    }
    EXPECT_EQ(liveTextures() - before, 4);
}

TEST_F(TextureCacheTest, FreesTheStorageOfAnEarlierSize) {
    const int before = liveTextures();
    Viewer viewer(context_);
    viewer.show(gradientFrame({64, 32}));
    for (int i = 0; i < 20; ++i)
        viewer.show(gradientFrame({8, 6}));
    EXPECT_EQ(liveTextures() - before, 2);
}

TEST_F(TextureCacheTest, DoesNotGrowWithBuffersThatSomebodyKeeps) {
    const int before = liveTextures();
    Viewer viewer(context_);
    std::vector<PixelBufferPtr> kept;
    for (int i = 0; i < 100; ++i) {
        kept.push_back(gradientFrame({8, 6}));
        viewer.show(kept.back());
    }
    EXPECT_LE(liveTextures() - before, 20);
}

TEST_F(TextureCacheTest, FreesEverythingWithTheLastCache) {
    const int before = liveTextures();
    const auto buffer = gradientFrame({8, 6});
    auto one = std::make_unique<Viewer>(context_);
    auto other = std::make_unique<Viewer>(context_);
    one->show(buffer);
    other->show(buffer);
    one.reset();
    EXPECT_EQ(liveTextures() - before, 2);
    other.reset();
    EXPECT_EQ(liveTextures(), before);
}

TEST_F(TextureCacheTest, UploadsAnewIntoANewContextAndDeletesNothingThere) {
    const auto buffer = gradientFrame({8, 6});
    auto lost = std::make_unique<Viewer>(context_);
    lost->show(buffer);
    ASSERT_TRUE(host_->replaceContext());
    Viewer viewer(GLContext::create());
    EXPECT_EQ(uploadsDuring([&] { viewer.show(buffer); }), 2U);
    const int live = liveTextures();
    lost.reset();
    EXPECT_EQ(liveTextures(), live);
    EXPECT_EQ(texelsOf(viewer.texture(0), 0), bytesOf(*buffer, 0, {8, 6}));
}

TEST_F(TextureCacheTest, SaysThatItsContextHasGone) {
    const auto cache = TextureCache::create(context_).cache;
    ASSERT_TRUE(host_->replaceContext());
    const auto plane =
        cache->createTextureFromImage(gradientFrame({8, 6}), 0, GL_LUMINANCE, {8, 6});
    EXPECT_EQ(plane.texture, nullptr);
    EXPECT_EQ(plane.status, TextureCache::kNoContext);
    EXPECT_EQ(TextureCache::create(context_).status, TextureCache::kNoContext);
    EXPECT_EQ(TextureCache::create(nullptr).cache, nullptr);
}

TEST_F(TextureCacheTest, HandsOnGLsErrorAndLeavesNothingBehind) {
    const auto cache = TextureCache::create(context_).cache;
    const int before = liveTextures();
    const int tooWide = GLDevice::main().maxTextureSidePx() + 1;
    const auto plane =
        cache->createTextureFromImage(gradientFrame({tooWide, 2}), 0, GL_LUMINANCE, {tooWide, 2});
    EXPECT_EQ(plane.texture, nullptr);
    EXPECT_EQ(plane.status, GL_INVALID_VALUE);
    EXPECT_EQ(liveTextures(), before);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
