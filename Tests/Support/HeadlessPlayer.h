#pragma once

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Imaging/Image.h"

#include <array>
#include <cstdint>
#include <memory>

/// A picture of one colour.
[[nodiscard]] platform::ImagePtr flatPicture(int widthPx, int heightPx, std::uint8_t red,
                                             std::uint8_t green, std::uint8_t blue,
                                             std::uint8_t alpha = 255);

/// The red, green, blue and alpha of a pixel, counted from the top left.
[[nodiscard]] std::array<int, 4> colourAt(const platform::Image& image, int x, int y);

/// A headless host, for tests that cannot go on without one.
[[nodiscard]] std::unique_ptr<zanto::HeadlessHost> makeHost(platform::Size size,
                                                            double scale = 1.0);

/// A player in a headless host, in virtual time.
class HeadlessPlayer {
public:
    explicit HeadlessPlayer(platform::Size size, double scale = 1.0);

    /// Prepares a picture, has the view appear and waits until it can be drawn.
    void show(const platform::ImagePtr& picture);

    [[nodiscard]] zanto::HeadlessHost& host() { return *host_; }
    [[nodiscard]] zanto::EmbeddedHost& embedded() { return host_->embedded(); }
    [[nodiscard]] ZNTDisplayViewController& controller() { return *controller_; }
    [[nodiscard]] ZNTDisplayView& view() { return *controller_->displayView(); }
    /// A fresh frame of the whole window.
    [[nodiscard]] platform::ImagePtr snapshot();
    /// Lets go of the controller, as a host application does.
    void releaseController();

private:
    double scale_;
    std::unique_ptr<zanto::HeadlessHost> host_;
    std::shared_ptr<ZNTDisplayViewController> controller_;
};
