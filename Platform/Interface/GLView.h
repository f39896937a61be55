#pragma once

#include "Platform/Imaging/Image.h"
#include "Platform/Interface/View.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

namespace platform {

class GLContext;
class GLView;

/// Draws the content of a `GLView`.
class GLViewDelegate {
public:
    virtual ~GLViewDelegate() = default;

    /// Draws one frame. The view's framebuffer is bound; viewport and scissor box are the view's
    /// part of it, and the scissor test is on; blending, face culling, depth test and stencil test
    /// are off. `rect` is the view's bounds in points. The delegate clears the background.
    virtual void drawInRect(GLView& view, const Rect& rect) = 0;
};

/// A view that draws its content with GL, directly into the host's framebuffer.
///
/// It is redrawn on demand: `setNeedsDisplay()` requests the next frame time, `display()` an
/// immediate redraw.
///
/// Owner:  the delegate is held weakly; without one the view shows nothing.
/// Thread: main.
class GLView : public View {
public:
    using View::View;

    [[nodiscard]] std::shared_ptr<GLContext> context() const { return context_; }
    void setContext(std::shared_ptr<GLContext> context);
    void setDelegate(std::weak_ptr<GLViewDelegate> delegate);

    /// Draws now if the window is drawing into the host's framebuffer, else requests a pass that
    /// does not wait for the next frame time.
    void display();

    /// Valid during `drawInRect`. True if the framebuffer has content that is not the view's, over
    /// which a transparent view is drawn; false if the framebuffer is the view's own.
    [[nodiscard]] bool isDrawnOverContent() const { return isDrawnOverContent_; }

    /// The pixel at a point of the view: red, green, blue and alpha. It equals that pixel of
    /// `snapshot()` and costs a fraction, because the frame is drawn for it alone.
    ///
    /// Errors: `nullopt` outside of the view and without a context.
    [[nodiscard]] std::optional<std::array<std::uint8_t, 4>> pixelAt(Point point);

    /// Draws a frame into a framebuffer of its own, at the screen's scale, without touching the
    /// window.
    ///
    /// Errors: null and a log line without a context or for a size over its limit.
    [[nodiscard]] ImagePtr snapshot();

protected:
    void drawContent(const DrawTarget& target) override;
    [[nodiscard]] bool coversItsFrame() const override;

private:
    [[nodiscard]] SizePx snapshotSize() const;

    std::shared_ptr<GLContext> context_;
    std::weak_ptr<GLViewDelegate> delegate_;
    bool isDrawnOverContent_ = false;
};

} // namespace platform
