#include "Platform/Interface/GLView.h"

#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Platform/Interface/Window.h"

#include <GLES2/gl2.h>

#include <cmath>
#include <utility>

namespace platform {

void GLView::setContext(std::shared_ptr<GLContext> context) {
    context_ = std::move(context);
}

void GLView::setDelegate(std::weak_ptr<GLViewDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void GLView::display() {
    setNeedsDisplay();
    if (const auto window = this->window())
        window->displayAtOnce(*this);
}

void GLView::drawContent(const DrawTarget& target) {
    const auto delegate = delegate_.lock();
    if (!delegate || !GLContext::setCurrentContext(context_))
        return;
    const RectPx& area = target.area;
    glBindFramebuffer(GL_FRAMEBUFFER, target.framebuffer);
    glViewport(area.x, area.y, area.width, area.height);
    glScissor(area.x, area.y, area.width, area.height);
    glEnable(GL_SCISSOR_TEST);
    // The host's application may have left these as its own scene needs them.
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_STENCIL_TEST);
    isDrawnOverContent_ = target.isWindow;
    delegate->drawInRect(*this, bounds());
}

bool GLView::coversItsFrame() const {
    return GLContext::setCurrentContext(context_) && !delegate_.expired();
}

SizePx GLView::snapshotSize() const {
    const double scale = Screen::mainScreen().scale();
    return {static_cast<int>(std::lround(bounds().size.width * scale)),
            static_cast<int>(std::lround(bounds().size.height * scale))};
}

std::optional<std::array<std::uint8_t, 4>> GLView::pixelAt(Point point) {
    const double scale = Screen::mainScreen().scale();
    const SizePx size = snapshotSize();
    const double x = std::floor(point.x * scale);
    const double y = std::floor(point.y * scale);
    // The negation also excludes NaN.
    if (!(x >= 0 && y >= 0 && x < size.width && y < size.height))
        return std::nullopt;
    if (!GLContext::setCurrentContext(context_))
        return std::nullopt;
    const auto target = OffscreenTarget::create({1, 1});
    if (!target)
        return std::nullopt;
    // The frame is placed around its one pixel; GL counts rows from the bottom.
    const int fromBottom = size.height - 1 - static_cast<int>(y);
    drawContent({target.value()->framebuffer(),
                 {-static_cast<int>(x), -fromBottom, size.width, size.height},
                 scale,
                 false});
    const PixelStorage pixel = target.value()->readPixels();
    return std::array{pixel.bytes[0], pixel.bytes[1], pixel.bytes[2], pixel.bytes[3]};
}

ImagePtr GLView::snapshot() {
    const double scale = Screen::mainScreen().scale();
    const SizePx size = snapshotSize();
    if (!GLContext::setCurrentContext(context_)) {
        log(LogLevel::Error, "snapshot: the view has no GL context");
        return nullptr;
    }
    auto target = OffscreenTarget::create(size);
    if (!target) {
        log(LogLevel::Error, "snapshot: " + target.error().detail);
        return nullptr;
    }
    drawContent({target.value()->framebuffer(), {0, 0, size.width, size.height}, scale, false});
    return std::make_shared<Image>(target.value()->readPixels(), scale);
}

} // namespace platform
