#include "Platform/Graphics/GLView.h"

#include "Platform/Foundation/Log.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Platform/Interface/Screen.h"
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
    // An application that draws its own scene leaves these as that scene needs them.
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_STENCIL_TEST);
    isDrawnOverContent_ = target.isWindow;
    delegate->drawInRect(*this, bounds());
}

bool GLView::coversItsFrame() const {
    return context_ && !delegate_.expired();
}

ImagePtr GLView::snapshot() {
    const double scale = Screen::mainScreen().scale();
    const SizePx size{static_cast<int>(std::lround(bounds().size.width * scale)),
                      static_cast<int>(std::lround(bounds().size.height * scale))};
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
