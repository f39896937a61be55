#include "Apps/Player/Contents/BuiltInPanorama.h"

#include "Platform/Foundation/Bundle.h"

#include <string_view>

/// Embedded at build time from Resources/panorama.jpg.
extern const std::string_view kPanorama;

platform::ImagePtr builtInPanorama() {
    const platform::Bundle bundle({{"panorama.jpg", kPanorama}});
    const auto encoded = bundle.data("panorama", "jpg");
    return encoded ? platform::Image::imageWithData(*encoded) : nullptr;
}
