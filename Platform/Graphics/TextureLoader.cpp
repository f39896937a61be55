#include "Platform/Graphics/TextureLoader.h"

#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Imaging/PictureScaler.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace platform {
namespace {

/// The textures that live, by their picture.
class Uploads {
public:
    static Uploads& shared() {
        static Uploads uploads;
        return uploads;
    }

    std::shared_ptr<TextureInfo> find(const ImagePtr& image, std::uint32_t generation) {
        std::erase_if(entries_, [](const Entry& entry) { return entry.texture.expired(); });
        for (const Entry& entry : entries_) {
            if (entry.image.lock() == image && entry.generation == generation)
                return entry.texture.lock();
        }
        return nullptr;
    }

    void add(const ImagePtr& image, std::uint32_t generation,
             const std::shared_ptr<TextureInfo>& texture) {
        entries_.push_back({image, generation, texture});
    }

private:
    struct Entry {
        std::weak_ptr<const Image> image;
        std::uint32_t generation;
        std::weak_ptr<TextureInfo> texture;
    };
    std::vector<Entry> entries_;
};

ImagePtr fitted(const ImagePtr& image, int maxSidePx) {
    if (std::max(image->widthPx(), image->heightPx()) <= maxSidePx)
        return image;
    ImagePtr smaller = scaledDownToFit(*image, maxSidePx);
    log(LogLevel::Warning,
        "texture: the picture is scaled down from " + std::to_string(image->widthPx()) + " x " +
            std::to_string(image->heightPx()) + " to " + std::to_string(smaller->widthPx()) +
            " x " + std::to_string(smaller->heightPx()) + " pixels to fit the graphics limit");
    return smaller;
}

/// An error left by somebody else must not be taken for an upload's. Bounded, because a lost
/// context reports the same error for ever.
void clearErrors() {
    constexpr int mostFlags = 16;
    for (int i = 0; i < mostFlags && glGetError() != GL_NO_ERROR; ++i) {
    }
}

std::shared_ptr<TextureInfo> upload(const std::shared_ptr<GLContext>& context, SizePx size,
                                    const std::uint8_t* rgba) {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, size.width, size.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 rgba);
    return std::make_shared<TextureInfo>(context, name, size);
}

std::vector<std::uint8_t> premultiplied(std::span<const std::uint8_t> straight) {
    std::vector<std::uint8_t> pixels(straight.begin(), straight.end());
    for (std::size_t i = 0; i + 3 < pixels.size(); i += 4) {
        const unsigned alpha = pixels[i + 3];
        for (std::size_t channel = i; channel < i + 3; ++channel)
            pixels[channel] = static_cast<std::uint8_t>((pixels[channel] * alpha + 127) / 255);
    }
    return pixels;
}

} // namespace

TextureInfo::TextureInfo(std::shared_ptr<GLContext> context, std::uint32_t name, SizePx size)
    : context_(std::move(context)), name_(name), size_(size) {}

TextureInfo::~TextureInfo() {
    if (GLContext::setCurrentContext(context_))
        glDeleteTextures(1, &name_);
}

TextureLoader::TextureLoader(std::shared_ptr<GLContext> context) : context_(std::move(context)) {}

void TextureLoader::textureWithImage(ImagePtr image, Completion completion) {
    MainQueue::main().async([context = context_, image = std::move(image),
                             completion = std::move(completion),
                             work = MainQueue::main().beginWork()] {
        if (!image || !GLContext::setCurrentContext(context))
            return completion(nullptr, GL_NO_ERROR);
        const std::uint32_t generation = GLDevice::main().generation();
        if (auto shared = Uploads::shared().find(image, generation))
            return completion(std::move(shared), GL_NO_ERROR);
        if (image->pixels().empty())
            return completion(nullptr, GL_NO_ERROR);
        const ImagePtr picture = fitted(image, GLDevice::main().maxTextureSidePx());
        clearErrors();
        auto texture =
            upload(context, {picture->widthPx(), picture->heightPx()}, picture->pixels().data());
        if (const GLenum error = glGetError(); error != GL_NO_ERROR)
            return completion(nullptr, error);
        Uploads::shared().add(image, generation, texture);
        image->giveBackPixels();
        completion(std::move(texture), GL_NO_ERROR);
    });
}

TextureLoader::Upload TextureLoader::premultipliedTexture(const std::shared_ptr<GLContext>& context,
                                                          const Image& image) {
    if (std::max(image.widthPx(), image.heightPx()) > GLDevice::main().maxTextureSidePx())
        return {};
    const std::vector<std::uint8_t> pixels = premultiplied(image.pixels());
    clearErrors();
    auto texture = upload(context, {image.widthPx(), image.heightPx()}, pixels.data());
    if (const GLenum error = glGetError(); error != GL_NO_ERROR)
        return {nullptr, error};
    return {std::move(texture), GL_NO_ERROR};
}

std::shared_ptr<TextureInfo>
TextureLoader::transparentTexture(const std::shared_ptr<GLContext>& context) {
    constexpr std::array<std::uint8_t, 4> pixel{0, 0, 0, 0};
    return upload(context, {1, 1}, pixel.data());
}

} // namespace platform
