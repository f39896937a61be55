#pragma once

#include "Platform/Imaging/Image.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform {
class TextureInfo;
}

/// The textures of hot spots. All hot spots with the same picture share one texture, which is
/// deleted with the last of them; a context that replaces a lost one has textures of its own.
///
/// Thread: main.
class MarkerTextures {
public:
    [[nodiscard]] static MarkerTextures& shared();

    /// The texture of a picture of the application's bundle or, where `name` is empty, of `image`.
    /// A picture over the context's limit is scaled down to fit, with a log line. The GL context is
    /// current.
    ///
    /// Errors: null, and a log line, without a picture or a context, or when GL refuses the upload.
    [[nodiscard]] std::shared_ptr<platform::TextureInfo>
    textureWith(const std::string& name, const platform::ImagePtr& image);

private:
    /// What tells one picture from another, and one real context from the next.
    struct Key {
        std::string name;
        double scale = 0; // of the screen, which picks the file of a name
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
