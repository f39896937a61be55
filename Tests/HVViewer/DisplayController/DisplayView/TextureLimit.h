#pragma once

#include "Platform/Imaging/Image.h"

/// Makes GL behave like a device whose largest texture has this side: it reports the limit to
/// contexts that are installed from then on, and every upload of a larger texture fails with
/// GL_INVALID_VALUE. Stands between the library and the driver in the whole test program; without
/// an instance everything passes through. Decode limits that a host lowers meanwhile are restored.
class TextureLimit {
public:
    explicit TextureLimit(int sidePx);
    ~TextureLimit();
    TextureLimit(const TextureLimit&) = delete;
    TextureLimit& operator=(const TextureLimit&) = delete;

private:
    platform::DecodeLimits decodeLimits_ = platform::Image::decodeLimits();
};
