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

    /// The view's framebuffer is bound; viewport and scissor box are the view's part of it, and the
    /// scissor test is on; blending, face culling, depth and stencil test are off. `rect` is the
    /// view's bounds in points. The delegate clears.
    virtual void drawInRect(GLView& view, const Rect& rect) = 0;
};

/// A view whose content is drawn with GL, straight into the host's framebuffer.
///
/// Redraws happen on demand: `setNeedsDisplay()` asks for the next frame instant, `display()` for
/// one at once.
///
/// Owner:  the delegate is held weakly; without one the view shows nothing.
/// Thread: main.
class GLView : public View {
public:
    using View::View;

    [[nodiscard]] std::shared_ptr<GLContext> context() const { return context_; }
    void setContext(std::shared_ptr<GLContext> context);
    void setDelegate(std::weak_ptr<GLViewDelegate> delegate);

    /// Draws now while the window draws into the host's framebuffer, else in the next pass, which
    /// then comes at once.
    void display();

    /// During `drawInRect`: below is what somebody else has drawn, which a transparent view leaves
    /// alone; otherwise the framebuffer is its own.
    [[nodiscard]] bool isDrawnOverContent() const { return isDrawnOverContent_; }

    /// The pixel under a point of the view, of a frame that is drawn for it alone: what
    /// `snapshot()` would have there, at the price of a fraction. Red, green, blue and alpha.
    ///
    /// Errors: none outside the view and without a context.
    [[nodiscard]] std::optional<std::array<std::uint8_t, 4>> pixelAt(Point point);

    /// Draws a frame into a framebuffer of its own, at the screen's scale, and leaves the window
    /// alone.
    ///
    /// Errors: null, and a log line, without a context or beyond what it can hold.
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
