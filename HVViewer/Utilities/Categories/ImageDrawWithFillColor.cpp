#include "HVViewer/Utilities/Categories/ImageDrawWithFillColor.h"

#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Imaging/BitmapContext.h"

using platform::BlendMode;
using platform::ImagePtr;

ImagePtr imageWithColor(const std::optional<platform::Color>& color) {
    return imageWithColor(color, {1.0, 1.0});
}

ImagePtr imageWithColor(const std::optional<platform::Color>& color, platform::Size withSize) {
    if (!color)
        platform::failAssertion("UIImage+DrawWithFillColor", 42,
                                "Invalid parameter not satisfying: fillColor");
    const auto context = platform::makeBitmapContext(withSize, 1.0);
    if (!context)
        return nullptr;
    context->fillRect({{}, withSize}, *color);
    return context->image();
}

ImagePtr tintedImageWithColor(const platform::Image& image, const platform::Color& color,
                              BlendMode blendingMode) {
    const auto context =
        platform::makeBitmapContext(image.size(), platform::Screen::mainScreen().scale());
    if (!context)
        return nullptr;
    const platform::Rect all{{}, image.size()};
    context->fillRect(all, color);
    context->drawImage(image, all, blendingMode);
    if (blendingMode != BlendMode::DestinationIn)
        context->drawImage(image, all, BlendMode::DestinationIn);
    return context->image();
}
