#include "Backends/JPEG/JPEGDecoder.h"
#include "Backends/PNG/PNGDecoder.h"
#include "Backends/WebP/WebPDecoder.h"
#include "Platform/Imaging/ImageDecoder.h"

#include <array>

namespace platform {

std::span<const ImageDecoder* const> imageDecoders() {
    // Never destroyed: a worker may still decode while the process exits.
    static const auto& table =
        *new std::array<const ImageDecoder*, 3>{new JPEGDecoder, new PNGDecoder, new WebPDecoder};
    return table;
}

} // namespace platform
