#include "HVViewer/Model/HotSpot/MarkerTextures.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/TextureLoader.h"
#include "Platform/Imaging/NamedImage.h"
#include "Platform/Imaging/PictureScaler.h"

#include <GLES2/gl2.h>

#include <algorithm>

namespace {

std::string sizeOf(const platform::Image& image) {
    return std::to_string(image.widthPx()) + " x " + std::to_string(image.heightPx());
}

void logError(const std::string& text) {
    platform::log(platform::LogLevel::Error, text);
}

platform::ImagePtr fitted(const platform::ImagePtr& image) {
    const int limit = platform::GLDevice::main().maxTextureSidePx();
    if (std::max(image->widthPx(), image->heightPx()) <= limit)
        return image;
    auto smaller = platform::scaledDownToFit(*image, limit);
    platform::log(platform::LogLevel::Warning, "hot spot: its picture is scaled down from " +
                                                   sizeOf(*image) + " to " + sizeOf(*smaller) +
                                                   " pixels to fit the graphics limit");
    return smaller;
}

std::shared_ptr<platform::TextureInfo> upload(const std::shared_ptr<platform::GLContext>& context,
                                              const platform::ImagePtr& image) {
    auto made = platform::TextureLoader::premultipliedTexture(context, *fitted(image));
    // If no GL context is current, GL creates no texture and reports no error.
    if (made.texture && glIsTexture(made.texture->name()))
        return made.texture;
    logError("hot spot: its picture of " + sizeOf(*image) +
             " pixels cannot be uploaded, GL Error = " + std::to_string(made.glError));
    return nullptr;
}

} // namespace

MarkerTextures& MarkerTextures::shared() {
    return platform::Environment::current().part<MarkerTextures>();
}

bool MarkerTextures::Key::equals(const Key& other) const {
    if (generation != other.generation || name != other.name)
        return false;
    return name.empty() ? image.lock() == other.image.lock() : scale == other.scale;
}

std::shared_ptr<platform::TextureInfo> MarkerTextures::find(const Key& key) {
    std::erase_if(entries_, [](const Entry& entry) { return entry.texture.expired(); });
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&key](const Entry& entry) { return entry.key.equals(key); });
    return found == entries_.end() ? nullptr : found->texture.lock();
}

std::shared_ptr<platform::TextureInfo>
MarkerTextures::textureWith(const std::string& name, const platform::ImagePtr& image) {
    const auto context = platform::GLContext::currentContext();
    const bool isCurrent = platform::GLContext::setCurrentContext(context);
    const Key key{name, platform::Screen::mainScreen().scale(), image,
                  platform::GLDevice::main().generation()};
    if (isCurrent && (!name.empty() || image)) {
        if (auto texture = find(key))
            return texture;
    }
    const auto picture = name.empty() ? image : platform::imageNamed(name);
    if (!picture || picture->pixels().empty()) {
        logError("Error - cant setup texture for hotSpot, nill image");
        return nullptr;
    }
    if (!isCurrent) {
        logError("hot spot: its picture cannot be uploaded without a GL context");
        return nullptr;
    }
    auto texture = upload(context, picture);
    if (texture)
        entries_.push_back({key, texture});
    return texture;
}
