#include "Tests/Support/HeadlessPlayer.h"

#include <stdexcept>
#include <utility>

using platform::ImagePtr;

ImagePtr flatPicture(int widthPx, int heightPx, std::uint8_t red, std::uint8_t green,
                     std::uint8_t blue, std::uint8_t alpha) {
    platform::PixelStorage pixels(widthPx, heightPx);
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        pixels.bytes[i] = red;
        pixels.bytes[i + 1] = green;
        pixels.bytes[i + 2] = blue;
        pixels.bytes[i + 3] = alpha;
    }
    return std::make_shared<platform::Image>(std::move(pixels));
}

std::array<int, 4> colourAt(const platform::Image& image, int x, int y) {
    const auto offset = static_cast<std::size_t>(y * image.widthPx() + x) * 4;
    const auto pixel = image.pixels().subspan(offset, 4);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

std::unique_ptr<zanto::HeadlessHost> makeHost(platform::Size size, double scale) {
    auto host = zanto::HeadlessHost::create({.size = size, .scale = scale});
    if (!host)
        throw std::runtime_error(host.error().detail);
    return std::move(host).value();
}

HeadlessPlayer::HeadlessPlayer(platform::Size size, double scale)
    : scale_(scale), host_(makeHost(size, scale)),
      controller_(platform::make<ZNTDisplayViewController>()) {
    embedded().setRootViewController(controller_);
}

void HeadlessPlayer::show(const ImagePtr& picture) {
    controller_->prepareImage(picture);
    embedded().appear();
    host_->settle();
}

ImagePtr HeadlessPlayer::snapshot() {
    host_->settle();
    auto picture = embedded().snapshot(scale_);
    if (!picture)
        throw std::runtime_error(picture.error().detail);
    return picture.value();
}

void HeadlessPlayer::releaseController() {
    embedded().setRootViewController(nullptr);
    controller_.reset();
}
