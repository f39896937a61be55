#include "Backends/Cairo/CairoBitmapContext.h"

#include "Platform/Foundation/Log.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

namespace platform {
namespace {

constexpr double kMaxSidePx = 32767;

/// Indexed by `BlendMode`. Cairo has no operator for PlusDarker: its entry is an unused
/// placeholder, and `addDarkness` implements the mode.
constexpr std::array<cairo_operator_t, 27> kOperators{
    CAIRO_OPERATOR_OVER,        CAIRO_OPERATOR_MULTIPLY,
    CAIRO_OPERATOR_SCREEN,      CAIRO_OPERATOR_OVERLAY,
    CAIRO_OPERATOR_DARKEN,      CAIRO_OPERATOR_LIGHTEN,
    CAIRO_OPERATOR_COLOR_DODGE, CAIRO_OPERATOR_COLOR_BURN,
    CAIRO_OPERATOR_SOFT_LIGHT,  CAIRO_OPERATOR_HARD_LIGHT,
    CAIRO_OPERATOR_DIFFERENCE,  CAIRO_OPERATOR_EXCLUSION,
    CAIRO_OPERATOR_HSL_HUE,     CAIRO_OPERATOR_HSL_SATURATION,
    CAIRO_OPERATOR_HSL_COLOR,   CAIRO_OPERATOR_HSL_LUMINOSITY,
    CAIRO_OPERATOR_CLEAR,       CAIRO_OPERATOR_SOURCE,
    CAIRO_OPERATOR_IN,          CAIRO_OPERATOR_OUT,
    CAIRO_OPERATOR_ATOP,        CAIRO_OPERATOR_DEST_OVER,
    CAIRO_OPERATOR_DEST_IN,     CAIRO_OPERATOR_DEST_ATOP,
    CAIRO_OPERATOR_XOR,         CAIRO_OPERATOR_DEST,
    CAIRO_OPERATOR_ADD};

cairo_operator_t operatorOf(BlendMode mode) {
    const auto index = static_cast<std::size_t>(mode);
    return index < kOperators.size() ? kOperators[index] : CAIRO_OPERATOR_OVER;
}

/// Clips to the rectangle instead of filling it, because some operators also change pixels outside
/// of the filled shape.
void paint(cairo_t* context, cairo_surface_t* picture, const Rect& rect, cairo_operator_t how) {
    const CairoPattern pattern(cairo_pattern_create_for_surface(picture));
    cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_BEST);
    // Without padding, the transparency around the image would blend into its edges.
    cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_PAD);
    cairo_save(context);
    cairo_rectangle(context, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    cairo_clip(context);
    cairo_translate(context, rect.origin.x, rect.origin.y);
    cairo_scale(context, rect.size.width / cairo_image_surface_get_width(picture),
                rect.size.height / cairo_image_surface_get_height(picture));
    cairo_set_source(context, pattern.get());
    cairo_set_operator(context, how);
    cairo_paint(context);
    cairo_restore(context);
}

/// The PlusDarker operator on premultiplied pixels: alpha is min(1, the sum of both alphas), and
/// each channel is that alpha minus the sum of both darknesses (alpha minus channel), at least 0.
std::uint32_t darkerSum(std::uint32_t source, std::uint32_t there) {
    const int sourceAlpha = static_cast<int>(source >> 24U);
    const int alphaThere = static_cast<int>(there >> 24U);
    const int alpha = std::min(255, sourceAlpha + alphaThere);
    auto sum = static_cast<std::uint32_t>(alpha) << 24U;
    for (unsigned shift = 0; shift < 24; shift += 8) {
        const int darkness = sourceAlpha - static_cast<int>(source >> shift & 255U) + alphaThere -
                             static_cast<int>(there >> shift & 255U);
        sum |= static_cast<std::uint32_t>(std::max(0, alpha - darkness)) << shift;
    }
    return sum;
}

void logFailure(const std::string& what, cairo_status_t status) {
    log(LogLevel::Error, what + ": " + cairo_status_to_string(status));
}

} // namespace

CairoBitmapContext::CairoBitmapContext(SizePx size, double scale)
    : scale_(scale), surface_(makeSurface(size)), context_(cairo_create(surface_.get())) {
    cairo_scale(context_.get(), scale, scale);
}

void CairoBitmapContext::fillRect(const Rect& rect, const Color& color) {
    cairo_t* const context = context_.get();
    cairo_set_source_rgba(context, static_cast<double>(color.red), static_cast<double>(color.green),
                          static_cast<double>(color.blue), static_cast<double>(color.alpha));
    cairo_rectangle(context, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    cairo_fill(context);
}

cairo_status_t CairoBitmapContext::status() const {
    return failure_ == CAIRO_STATUS_SUCCESS ? cairo_status(context_.get()) : failure_;
}

void CairoBitmapContext::drawImage(const Image& image, const Rect& inRect, BlendMode mode) {
    const CairoSurface picture = surfaceOf(image);
    if (const auto failure = cairo_surface_status(picture.get()); failure != CAIRO_STATUS_SUCCESS)
        failure_ = failure;
    else if (mode == BlendMode::PlusDarker)
        addDarkness(picture.get(), inRect);
    else
        paint(context_.get(), picture.get(), inRect, operatorOf(mode));
}

void CairoBitmapContext::addDarkness(cairo_surface_t* picture, const Rect& inRect) {
    const CairoSurface source = makeSurface({cairo_image_surface_get_width(surface_.get()),
                                             cairo_image_surface_get_height(surface_.get())});
    const CairoContext drawing(cairo_create(source.get()));
    cairo_scale(drawing.get(), scale_, scale_);
    paint(drawing.get(), picture, inRect, CAIRO_OPERATOR_OVER);
    if (const auto failure = cairo_status(drawing.get()); failure != CAIRO_STATUS_SUCCESS)
        failure_ = failure;
    if (status() != CAIRO_STATUS_SUCCESS)
        return;
    cairo_surface_flush(source.get());
    cairo_surface_flush(surface_.get());
    for (int y = 0; y < cairo_image_surface_get_height(source.get()); ++y) {
        const auto row = rowOf(source.get(), y);
        const auto there = rowOf(surface_.get(), y);
        std::transform(row.begin(), row.end(), there.begin(), there.begin(), darkerSum);
    }
    cairo_surface_mark_dirty(surface_.get());
}

ImagePtr CairoBitmapContext::image() const {
    if (status() != CAIRO_STATUS_SUCCESS) {
        logFailure("a picture could not be drawn", status());
        return nullptr;
    }
    return std::make_shared<const Image>(straightPixels(surface_.get()), scale_);
}

std::unique_ptr<BitmapContext> makeBitmapContext(Size points, double scale) {
    const double width = std::ceil(points.width * scale);
    const double height = std::ceil(points.height * scale);
    const auto fits = [](double side) { return side >= 1 && side <= kMaxSidePx; };
    if (!fits(width) || !fits(height)) {
        log(LogLevel::Error, "no picture of " + std::to_string(width) + " x " +
                                 std::to_string(height) + " pixels can be drawn");
        return nullptr;
    }
    auto context = std::make_unique<CairoBitmapContext>(
        SizePx{static_cast<int>(width), static_cast<int>(height)}, scale);
    if (context->status() == CAIRO_STATUS_SUCCESS)
        return context;
    logFailure("no picture can be drawn", context->status());
    return nullptr;
}

} // namespace platform
