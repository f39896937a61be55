#pragma once

#include "Platform/Imaging/Image.h"

#include <string_view>

/// The picture drawn over all content, wrapped over the same mesh: 4096 × 2048, mostly transparent.
/// It is decoded by the first call and kept.
///
/// Errors: null when the built-in text cannot be decoded.
[[nodiscard]] platform::ImagePtr watermarkPicture();

/// Decodes a picture from base64 text. Errors: null, without a word.
[[nodiscard]] platform::ImagePtr decodeWatermark(std::string_view base64);
