#include "HVViewer/Utilities/Categories/ImageGLBlend.h"

#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace {

const GLKVector4 kOpaqueBlack = GLKVector4Make(0, 0, 0, 1);

/// Makes GL write rows without padding, whatever alignment the application has set.
class PackAlignment {
public:
    PackAlignment() {
        glGetIntegerv(GL_PACK_ALIGNMENT, &before_);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
    }
    ~PackAlignment() { glPixelStorei(GL_PACK_ALIGNMENT, before_); }
    PackAlignment(const PackAlignment&) = delete;
    PackAlignment& operator=(const PackAlignment&) = delete;

private:
    GLint before_ = 4;
};

} // namespace

GLKVector4 pickPixelAtX(const platform::Image& image, std::uint64_t x, std::uint64_t y) {
    const double scale = platform::Screen::mainScreen().scale();
    const double px = std::trunc(static_cast<double>(x) * scale);
    const double py = std::trunc(static_cast<double>(y) * scale);
    if (px > image.widthPx() || py > image.heightPx())
        return kOpaqueBlack;
    const auto width = static_cast<std::size_t>(image.widthPx());
    const std::size_t offset =
        (width * static_cast<std::size_t>(py) + static_cast<std::size_t>(px)) * 4;
    const auto pixels = image.pixels();
    // A column and a row outside of the image pass the test above, but there is no data after the
    // last pixel.
    if (offset >= pixels.size())
        return kOpaqueBlack;
    const auto channel = [&](std::size_t i) {
        return static_cast<float>(pixels[offset + i]) / 255.0F;
    };
    return GLKVector4Make(channel(0), channel(1), channel(2), channel(3));
}

platform::ImagePtr screenShotFromGl() {
    // The screenshot is square on purpose: the width is used as the height, too.
    const auto side = static_cast<int>(platform::Screen::mainScreen().bounds().size.width);
    if (side < 1 || !platform::GLDevice::main().isInstalled()) {
        platform::log(platform::LogLevel::Error, "there is no screen to take a picture of");
        return nullptr;
    }
    platform::PixelStorage pixels(side, side);
    std::fill_n(pixels.bytes.get(), pixels.size(), std::uint8_t{0});
    {
        const PackAlignment none;
        glReadPixels(0, 0, side, side, GL_RGBA, GL_UNSIGNED_BYTE, pixels.bytes.get());
    }
    for (int top = 0, bottom = side - 1; top < bottom; ++top, --bottom)
        std::swap_ranges(pixels.row(top), pixels.row(top) + pixels.rowBytes(), pixels.row(bottom));
    // The image is opaque: the alpha in the framebuffer only results from blending.
    for (std::size_t i = 3; i < pixels.size(); i += 4)
        pixels.bytes[i] = 255;
    return std::make_shared<const platform::Image>(std::move(pixels));
}
