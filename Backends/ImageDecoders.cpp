#include "Backends/JPEG/JPEGDecoder.h"
#include "Backends/PNG/PNGDecoder.h"
#include "Backends/WebP/WebPDecoder.h"
#include "Platform/Imaging/ImageDecoder.h"

#include <array>

namespace platform {

std::span<const ImageDecoder* const> imageDecoders() {
    static const JPEGDecoder jpeg;
    static const PNGDecoder png;
    static const WebPDecoder webp;
    static const std::array<const ImageDecoder*, 3> table{&jpeg, &png, &webp};
    return table;
}

} // namespace platform
