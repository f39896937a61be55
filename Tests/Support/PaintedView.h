#pragma once

#include "Platform/Foundation/Color.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Interface/GLView.h"

#include <GLES2/gl2.h>

#include <functional>
#include <memory>
#include <utility>

/// Fills its view with one colour and notes what it was given.
class Painter : public platform::GLViewDelegate {
public:
    explicit Painter(platform::Color colour) : colour_(colour) {}

    void drawInRect(platform::GLView& view, const platform::Rect& rect) override {
        ++drawings;
        lastRect = rect;
        glClearColor(colour_.red, colour_.green, colour_.blue, colour_.alpha);
        glClear(GL_COLOR_BUFFER_BIT);
        if (during)
            during(view);
    }

    int drawings = 0;
    platform::Rect lastRect;
    /// Called at the end of every drawing.
    std::function<void(platform::GLView&)> during;

private:
    platform::Color colour_;
};

/// A GL view and the painter that it needs, which a view holds weakly.
struct PaintedView {
    PaintedView(platform::Rect frame, platform::Color colour)
        : painter(std::make_shared<Painter>(colour)),
          view(platform::make<platform::GLView>(frame)) {
        view->setContext(platform::GLContext::create());
        view->setDelegate(painter);
    }

    std::shared_ptr<Painter> painter;
    std::shared_ptr<platform::GLView> view;
};

inline constexpr platform::Color kRedColor{1, 0, 0, 1};
inline constexpr platform::Color kGreenColor{0, 1, 0, 1};
inline constexpr platform::Color kBlueColor{0, 0, 1, 1};
