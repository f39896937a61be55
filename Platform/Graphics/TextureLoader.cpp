#include "Platform/Graphics/TextureLoader.h"

#include "Platform/Foundation/Environment.h"
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

/// The existing textures by their image.
class Uploads {
public:
    static Uploads& shared() { return Environment::current().part<Uploads>(); }

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

/// A smaller copy of an image over the context's limit; null for one within the limit.
ImagePtr smallerCopy(const Image& image) {
    const int maxSidePx = GLDevice::main().maxTextureSidePx();
    if (std::max(image.widthPx(), image.heightPx()) <= maxSidePx)
        return nullptr;
    ImagePtr smaller = scaledDownToFit(image, maxSidePx);
    log(LogLevel::Warning,
        "texture: the picture is scaled down from " + std::to_string(image.widthPx()) + " x " +
            std::to_string(image.heightPx()) + " to " + std::to_string(smaller->widthPx()) + " x " +
            std::to_string(smaller->heightPx()) + " pixels to fit the graphics limit");
    return smaller;
}

TextureLoader::Upload upload(const std::shared_ptr<GLContext>& context, SizePx size,
                             const std::uint8_t* rgba) {
    auto texture = std::make_shared<TextureInfo>(context, size);
    if (const std::uint32_t error = texture->define(GL_RGBA, rgba); error != GL_NO_ERROR)
        return {.texture = nullptr, .glError = error};
    return {.texture = std::move(texture)};
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

TextureLoader::TextureLoader(std::shared_ptr<GLContext> context) : context_(std::move(context)) {}

void TextureLoader::textureWithImage(ImagePtr image, Completion completion) {
    MainQueue::main().async([context = context_, image = std::move(image),
                             completion = std::move(completion),
                             work = MainQueue::main().beginWork()] {
        if (!GLContext::setCurrentContext(context))
            return completion({.texture = nullptr, .contextIsGone = true});
        const std::uint32_t generation = GLDevice::main().generation();
        if (auto shared = image ? Uploads::shared().find(image, generation) : nullptr)
            return completion({.texture = std::move(shared)});
        if (!image || image->pixels().empty())
            return completion({});
        const ImagePtr smaller = smallerCopy(*image);
        const Image& picture = smaller ? *smaller : *image;
        Upload made =
            upload(context, {picture.widthPx(), picture.heightPx()}, picture.pixels().data());
        if (made.texture) {
            Uploads::shared().add(image, generation, made.texture);
            image->giveBackPixels();
        }
        completion(std::move(made));
    });
}

TextureLoader::Upload TextureLoader::premultipliedTexture(const std::shared_ptr<GLContext>& context,
                                                          const Image& image) {
    const ImagePtr smaller = smallerCopy(image);
    const Image& picture = smaller ? *smaller : image;
    const std::vector<std::uint8_t> pixels = premultiplied(picture.pixels());
    return upload(context, {picture.widthPx(), picture.heightPx()}, pixels.data());
}

std::shared_ptr<TextureInfo>
TextureLoader::transparentTexture(const std::shared_ptr<GLContext>& context) {
    constexpr std::array<std::uint8_t, 4> pixel{0, 0, 0, 0};
    auto texture = std::make_shared<TextureInfo>(context, SizePx{1, 1});
    (void)texture->define(GL_RGBA, pixel.data());
    return texture;
}

} // namespace platform
