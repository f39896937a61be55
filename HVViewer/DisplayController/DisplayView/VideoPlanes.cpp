#include "HVViewer/DisplayController/DisplayView/VideoPlanes.h"

#include "HVViewer/DisplayController/DisplayView/WatermarkPlanes.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Graphics/GLContext.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <string>
#include <utility>

namespace {

constexpr std::uint32_t kFrameUnit = 0;
constexpr std::uint32_t kWatermarkUnit = 2;

void logStatus(const char* text, std::int32_t status) {
    platform::log(platform::LogLevel::Error, text + std::to_string(status));
}

void bind(std::uint32_t unit, const platform::TextureInfo& texture) {
    glActiveTexture(GL_TEXTURE0 + unit);
    glBindTexture(GL_TEXTURE_2D, texture.name());
}

} // namespace

void VideoPlanes::prepareTextureCacheIfNeeded(const std::shared_ptr<platform::GLContext>& context) {
    if (videoTextureCache_)
        return;
    auto [cache, status] = platform::TextureCache::create(context);
    if (status != 0)
        logStatus("Error at CVOpenGLESTextureCacheCreate ", status);
    videoTextureCache_ = std::move(cache);
}

void VideoPlanes::upload(const platform::PixelBufferPtr& frame) {
    cleanUpTextures();
    frame_ = texturesOf(frame, kFrameUnit);
    if (watermark_)
        watermarkTextures_ = texturesOf(watermark_->buffer, kWatermarkUnit);
    glActiveTexture(GL_TEXTURE0);
}

void VideoPlanes::setWatermark(const WatermarkPlanes& watermark) {
    watermark_ = &watermark;
    if (!hasFrame())
        return;
    watermarkTextures_ = texturesOf(watermark.buffer, kWatermarkUnit);
    glActiveTexture(GL_TEXTURE0);
}

VideoPlanes::Textures VideoPlanes::texturesOf(const platform::PixelBufferPtr& buffer,
                                              std::uint32_t firstUnit) const {
    const auto [width, height] = buffer->size();
    glActiveTexture(GL_TEXTURE0 + firstUnit);
    auto luma =
        videoTextureCache_->createTextureFromImage(buffer, 0, GL_LUMINANCE, {width, height});
    if (!luma.texture)
        logStatus("Error at _lumaTexture CVOpenGLESTextureCacheCreateTextureFromImage ",
                  luma.status);
    glActiveTexture(GL_TEXTURE0 + firstUnit + 1);
    // A texture has at least one pixel, however narrow the video is.
    auto chroma = videoTextureCache_->createTextureFromImage(
        buffer, 1, GL_LUMINANCE_ALPHA, {std::max(width / 2, 1), std::max(height / 2, 1)});
    if (!chroma.texture)
        logStatus("Error at _chromaTexture CVOpenGLESTextureCacheCreateTextureFromImage ",
                  chroma.status);
    return {std::move(luma.texture), std::move(chroma.texture)};
}

void VideoPlanes::cleanUpTextures() {
    frame_ = {};
    watermarkTextures_ = {};
    if (videoTextureCache_)
        videoTextureCache_->flush();
}

void VideoPlanes::reset() {
    cleanUpTextures();
    watermark_ = nullptr;
    videoTextureCache_.reset();
}

const QuadMask* VideoPlanes::watermarkCoverage() const {
    return hasWatermark() ? &watermark_->coverage : nullptr;
}

void VideoPlanes::bindTextures() const {
    for (const std::uint32_t plane : {0U, 1U}) {
        bind(kFrameUnit + plane, *frame_[plane]);
        if (hasWatermark())
            bind(kWatermarkUnit + plane, *watermarkTextures_[plane]);
    }
    glActiveTexture(GL_TEXTURE0);
}
