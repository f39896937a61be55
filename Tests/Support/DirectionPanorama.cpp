#include "Tests/Support/DirectionPanorama.h"

#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <optional>
#include <utility>

namespace {

constexpr double kPi = std::numbers::pi;

/// A place in the panorama, both from 0 to 1, the origin at its top left.
struct PicturePoint {
    double across = 0;
    double down = 0;
};

WorldDirection directionOf(PicturePoint point) {
    const double yaw = (point.across - 0.5) * 2 * kPi;
    const double pitch = (0.5 - point.down) * kPi;
    return {std::sin(yaw) * std::cos(pitch), std::cos(yaw) * std::cos(pitch), std::sin(pitch)};
}

PicturePoint pointOf(const WorldDirection& d) {
    const double length = std::hypot(d.east, d.north, d.up);
    return {0.5 + std::atan2(d.east, d.north) / (2 * kPi), 0.5 - std::asin(d.up / length) / kPi};
}

std::array<std::uint8_t, 3> colourOf(const WorldDirection& d) {
    // A zigzag, eight times as steep as a plain ramp, so that a quarter of a degree shows; moved
    // off the middle, so that a mirrored picture does not look like itself.
    const auto channel = [](double value) {
        const double phase = value * 4 + 4.3;
        const double height = std::abs(phase - 2 * std::floor(phase / 2) - 1);
        return static_cast<std::uint8_t>(std::lround(255 * height));
    };
    return {channel(d.east), channel(d.north), channel(d.up)};
}

/// The camera of a mode in the words of the world.
class ExpectedView {
public:
    ExpectedView(DisplayMode mode, platform::Size size) : mode_(mode), size_(size) {
        const double ratio = std::max(size.width, size.height) / std::min(size.width, size.height);
        const bool landscape = size.width > size.height;
        far_ = ratio >= 1.7 ? 2.4806 : ratio > 1.49 ? 2.1 : 1.9;
        double degrees = 70;
        if (mode == DisplayMode::LittlePlanet)
            degrees = (landscape ? 105.0 : 115.0) / 0.8;
        tangent_ = std::tan(degrees / 2 * kPi / 180);
        ahead_ = mode == DisplayMode::Sphere && landscape ? 0.40312 : 0;
    }

    /// The place of the panorama that is seen at a point of the view, if any is.
    [[nodiscard]] std::optional<PicturePoint> seenAt(platform::Point p) const {
        const double right = (2 * p.x / size_.width - 1) * tangent_ * size_.width / size_.height;
        const double upward = (1 - 2 * p.y / size_.height) * tangent_;
        if (mode_ == DisplayMode::Plane)
            return onPlane(right, upward);
        if (mode_ == DisplayMode::Sphere)
            return onSphere({0, ahead_, 0}, {right, 1, upward});
        // The little planet is looked down on from 0.9 above the centre, with the north at the top.
        return onSphere({0, 0, 0.9}, {right, upward, -1});
    }

private:
    [[nodiscard]] std::optional<PicturePoint> onPlane(double right, double upward) const {
        const double distance = 1 / far_;
        const double halfHeight =
            std::min(size_.width, size_.height) / std::max(size_.width, size_.height) / 2;
        const PicturePoint point{0.5 + right * distance, 0.5 - upward * distance / halfHeight / 2};
        const auto inside = [](double value) { return value > 0 && value < 1; };
        return inside(point.across) && inside(point.down) ? std::optional(point) : std::nullopt;
    }

    /// Where a ray from inside meets the unit sphere; `along` is 1 deep for every step of the ray.
    [[nodiscard]] std::optional<PicturePoint> onSphere(const WorldDirection& from,
                                                       const WorldDirection& along) const {
        const auto dot = [](const WorldDirection& a, const WorldDirection& b) {
            return a.east * b.east + a.north * b.north + a.up * b.up;
        };
        const double a = dot(along, along);
        const double b = dot(from, along);
        const double steps = (-b + std::sqrt(b * b - a * (dot(from, from) - 1))) / a;
        if (steps > far_)
            return std::nullopt;
        return pointOf({from.east + steps * along.east, from.north + steps * along.north,
                        from.up + steps * along.up});
    }

    DisplayMode mode_;
    platform::Size size_;
    double far_;
    double tangent_;
    double ahead_;
};

bool underWatermark(const platform::Image& watermark, PicturePoint point) {
    constexpr int margin = 12;
    const int x = static_cast<int>(point.across * watermark.widthPx());
    const int y = static_cast<int>(point.down * watermark.heightPx());
    for (int dy = -margin; dy <= margin; dy += 3) {
        for (int dx = -margin; dx <= margin; dx += 3) {
            const int column = (x + dx + watermark.widthPx()) % watermark.widthPx();
            const int row = std::clamp(y + dy, 0, watermark.heightPx() - 1);
            const auto alpha = static_cast<std::size_t>(row * watermark.widthPx() + column) * 4 + 3;
            if (watermark.pixels()[alpha] != 0)
                return true;
        }
    }
    return false;
}

/// Whether the content begins or ends within a pixel and a half.
bool atAnEdge(const ExpectedView& view, platform::Point p, double pixel, bool seen) {
    for (const double dx : {-1.5, 1.5}) {
        for (const double dy : {-1.5, 1.5}) {
            if (view.seenAt({p.x + dx * pixel, p.y + dy * pixel}).has_value() != seen)
                return true;
        }
    }
    return false;
}

} // namespace

platform::ImagePtr directionPanorama(int widthPx) {
    platform::PixelStorage pixels(widthPx, widthPx / 2);
    for (int y = 0; y < pixels.heightPx; ++y) {
        for (int x = 0; x < widthPx; ++x) {
            const auto colour =
                colourOf(directionOf({(x + 0.5) / widthPx, (y + 0.5) / pixels.heightPx}));
            std::uint8_t* out = pixels.row(y) + static_cast<std::ptrdiff_t>(x) * 4;
            std::copy(colour.begin(), colour.end(), out);
            out[3] = 255;
        }
    }
    return std::make_shared<platform::Image>(std::move(pixels));
}

platform::ImagePtr expectedDirections(DisplayMode mode, platform::Size size, double scale) {
    const ExpectedView view(mode, size);
    const platform::ImagePtr watermark = builtInWatermark()->picture;
    platform::PixelStorage pixels(static_cast<int>(std::lround(size.width * scale)),
                                  static_cast<int>(std::lround(size.height * scale)));
    for (int y = 0; y < pixels.heightPx; ++y) {
        for (int x = 0; x < pixels.widthPx; ++x) {
            const platform::Point p{(x + 0.5) / scale, (y + 0.5) / scale};
            const auto seen = view.seenAt(p);
            std::uint8_t* out = pixels.row(y) + static_cast<std::ptrdiff_t>(x) * 4;
            const auto colour = seen ? colourOf(directionOf(*seen)) : std::array<std::uint8_t, 3>{};
            std::copy(colour.begin(), colour.end(), out);
            const bool unsure = atAnEdge(view, p, 1 / scale, seen.has_value()) ||
                                (seen && underWatermark(*watermark, *seen));
            out[3] = unsure ? 0 : 255;
        }
    }
    return std::make_shared<platform::Image>(std::move(pixels), scale);
}
