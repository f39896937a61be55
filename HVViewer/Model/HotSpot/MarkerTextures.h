#pragma once

#include "Platform/Imaging/Image.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform {
class TextureInfo;
}

/// The cache of hot spot textures. All hot spots with the same image share one texture, which is
/// deleted together with the last of them. Textures are not shared between GL contexts, also when
/// one context replaces another that was lost.
///
/// Thread: main.
class MarkerTextures {
public:
    [[nodiscard]] static MarkerTextures& shared();

    /// Returns the texture of the image called `name` in the application's bundle, or of `image` if
    /// `name` is empty. An image over the texture limit of the context is scaled down, which is
    /// logged. The GL context must be current.
    ///
    /// Errors: logs an error and returns null if there is no image or no context, or if the upload
    ///         fails.
    [[nodiscard]] std::shared_ptr<platform::TextureInfo>
    textureWith(const std::string& name, const platform::ImagePtr& image);

private:
    /// Identifies an image and the GL context that its texture belongs to.
    struct Key {
        std::string name;
        double scale = 0; // of the screen; selects the image file for a name
        std::weak_ptr<const platform::Image> image;
        std::uint32_t generation = 0;
        [[nodiscard]] bool equals(const Key& other) const;
    };
    struct Entry {
        Key key;
        std::weak_ptr<platform::TextureInfo> texture;
    };
    [[nodiscard]] std::shared_ptr<platform::TextureInfo> find(const Key& key);

    std::vector<Entry> entries_;
};
