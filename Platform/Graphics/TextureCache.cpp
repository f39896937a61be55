#include "Platform/Graphics/TextureCache.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace platform {
namespace {

/// A constant of EXT_unpack_subimage; used only where the context offers it.
constexpr GLenum kUnpackRowLength = 0x0CF2;

/// Every view flushes once per frame, so storage is reused within twice as many flushes as there
/// are views; storage that is idle for longer is freed.
constexpr int kMostIdleFlushes = 8;

int bytesPerTexel(GLenum format) {
    return format == GL_LUMINANCE ? 1 : 2;
}

bool canSkipPadding(int strideBytes, int texelBytes) {
    const GLDevice& device = GLDevice::main();
    return device.hasUnpackSubimage() && !device.quirks().copiesPaddedRows &&
           strideBytes % texelBytes == 0;
}

} // namespace

/// What the caches of an environment share.
struct TextureCache::Shared {
    std::weak_ptr<Uploads> uploads; // lives as long as any cache
    std::uint64_t uploadCount = 0;
};

TextureCache::Shared& TextureCache::shared() {
    return Environment::current().part<Shared>();
}

/// The textures with the planes that they hold, and spare storage; shared by all caches.
class TextureCache::Uploads {
public:
    static std::shared_ptr<Uploads> ofAllCaches() {
        auto uploads = shared().uploads.lock();
        if (!uploads)
            shared().uploads = uploads = std::make_shared<Uploads>();
        return uploads;
    }

    /// The texture that holds the plane already, or null.
    std::shared_ptr<TextureInfo> find(const PixelBuffer& buffer, int plane, GLenum format,
                                      SizePx size) {
        forgetLostContext();
        const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
            return entry.identity == buffer.identity() && entry.plane == plane &&
                   entry.fits(format, size);
        });
        if (found == entries_.end())
            return nullptr;
        found->idleFlushes = 0;
        return found->texture;
    }

    TextureCache::Plane upload(const std::shared_ptr<GLContext>& context,
                               const PixelBufferPtr& buffer, int plane, GLenum format,
                               SizePx size) {
        const auto spare = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
            return entry.isSpare() && entry.fits(format, size);
        });
        const bool isNew = spare == entries_.end();
        auto texture = isNew ? std::make_shared<TextureInfo>(context, size) : spare->texture;
        if (!isNew)
            glBindTexture(GL_TEXTURE_2D, texture->name());
        const GLenum error = fill(*texture, format, buffer->plane(plane), isNew);
        if (error != GL_NO_ERROR)
            return {nullptr, static_cast<std::int32_t>(error)};
        ++shared().uploadCount;
        Entry& entry = isNew ? entries_.emplace_back() : *spare;
        entry = {texture, format, buffer, buffer->identity(), plane};
        return {std::move(texture)};
    }

    void flush() {
        forgetLostContext();
        std::erase_if(entries_, [](Entry& entry) {
            return entry.isUnused() && ++entry.idleFlushes > kMostIdleFlushes;
        });
    }

private:
    struct Entry {
        std::shared_ptr<TextureInfo> texture;
        GLenum format = 0;
        std::weak_ptr<const PixelBuffer> buffer;
        std::uint64_t identity = 0; // of the buffer, which may have been destroyed
        int plane = 0;
        int idleFlushes = 0;

        [[nodiscard]] bool fits(GLenum wantedFormat, SizePx size) const {
            return format == wantedFormat && texture->size() == size;
        }
        [[nodiscard]] bool isUnused() const { return texture.use_count() == 1; }
        [[nodiscard]] bool isSpare() const { return isUnused() && buffer.expired(); }
    };

    void forgetLostContext() {
        // The textures' destructors do not delete names of a lost context.
        if (std::exchange(generation_, GLDevice::main().generation()) !=
            GLDevice::main().generation())
            entries_.clear();
    }

    GLenum fill(const TextureInfo& texture, GLenum format, const PixelBuffer::Plane& plane,
                bool isNew) {
        const int texelBytes = bytesPerTexel(format);
        const int rowBytes = texture.size().width * texelBytes;
        const bool isPadded = plane.strideBytes != rowBytes;
        const bool skips = isPadded && canSkipPadding(plane.strideBytes, texelBytes);
        if (skips)
            glPixelStorei(kUnpackRowLength, plane.strideBytes / texelBytes);
        const std::uint8_t* pixels = isPadded && !skips
                                         ? withoutPadding(plane, rowBytes, texture.size().height)
                                         : plane.bytes;
        // Storage that has been allocated accepts the next plane, so errors need not be checked.
        const GLenum error = isNew ? texture.define(format, pixels) : GL_NO_ERROR;
        if (!isNew)
            texture.refill(format, pixels);
        if (skips)
            glPixelStorei(kUnpackRowLength, 0);
        return error;
    }

    /// One copy and one upload cost a third of one upload per row.
    const std::uint8_t* withoutPadding(const PixelBuffer::Plane& plane, int rowBytes, int rows) {
        const auto length = static_cast<std::size_t>(rowBytes);
        packed_.resize(length * static_cast<std::size_t>(rows));
        for (int y = 0; y < rows; ++y)
            std::memcpy(packed_.data() + length * static_cast<std::size_t>(y),
                        plane.bytes + static_cast<std::ptrdiff_t>(y) * plane.strideBytes, length);
        return packed_.data();
    }

    std::vector<Entry> entries_;
    std::uint32_t generation_ = 0;
    std::vector<std::uint8_t> packed_; // kept for the next frame
};

TextureCache::Creation TextureCache::create(const std::shared_ptr<GLContext>& context) {
    if (!GLContext::setCurrentContext(context))
        return {nullptr, kNoContext};
    return {std::unique_ptr<TextureCache>(new TextureCache(context)), GL_NO_ERROR};
}

TextureCache::TextureCache(std::shared_ptr<GLContext> context)
    : context_(std::move(context)), uploads_(Uploads::ofAllCaches()) {}

TextureCache::~TextureCache() = default;

TextureCache::Plane TextureCache::createTextureFromImage(const PixelBufferPtr& buffer,
                                                         int planeIndex, std::uint32_t format,
                                                         SizePx size) {
    if (!GLContext::setCurrentContext(context_))
        return {nullptr, kNoContext};
    if (auto texture = uploads_->find(*buffer, planeIndex, format, size)) {
        glBindTexture(GL_TEXTURE_2D, texture->name());
        return {std::move(texture)};
    }
    return uploads_->upload(context_, buffer, planeIndex, format, size);
}

void TextureCache::flush() {
    uploads_->flush();
}

std::uint64_t TextureCache::uploadedPlanes() {
    return shared().uploadCount;
}

} // namespace platform
