#pragma once

#include "HVViewer/Model/DisplayMode.h"
#include "HVViewer/Model/InterractorDelegate.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Graphics/GLKMath.h"

#include <memory>

namespace platform {
class View;
}

/// The camera of one display view: the matrices and the zoom that its frames are drawn with.
///
/// Owner:  made and held by the display view, which it refers to weakly, as view and as delegate.
/// Thread: main.
class ZNTInterractor final : public platform::Object {
public:
    [[nodiscard]] static std::shared_ptr<ZNTInterractor>
    interractorWithView(const std::weak_ptr<platform::View>& view,
                        const std::weak_ptr<InterractorDelegate>& delegate);
    ZNTInterractor(std::weak_ptr<platform::View> view, std::weak_ptr<InterractorDelegate> delegate);

    /// The scene that is looked at. Setting it turns the camera back to where that scene starts and
    /// tells nobody.
    [[nodiscard]] DisplayMode currentVO() const { return currentVO_; }
    void setCurrentVO(DisplayMode mode);

    /// Zoom factor, 1 is neutral; the field of view is divided by it.
    [[nodiscard]] double scale() const { return scale_; }
    void setScale(double scale) { scale_ = scale; }

    /// Accumulated yaw: turns about the model's z axis.
    [[nodiscard]] GLKMatrix4 rotationMatrix() const { return rotationMatrix_; }
    void setRotationMatrix(const GLKMatrix4& matrix) { rotationMatrix_ = matrix; }
    /// Accumulated pitch: turns about x.
    [[nodiscard]] GLKMatrix4 viewMatrix() const { return viewMatrix_; }
    void setViewMatrix(const GLKMatrix4& matrix) { viewMatrix_ = matrix; }
    /// Offset of the flat picture.
    [[nodiscard]] GLKMatrix4 translationMatrix() const { return translationMatrix_; }
    void setTranslationMatrix(const GLKMatrix4& matrix) { translationMatrix_ = matrix; }

    [[nodiscard]] std::shared_ptr<platform::View> interractionView() const { return view_.lock(); }

    /// Tells the delegate that the camera has changed.
    void setNeedsUpdateMatrix();

private:
    std::weak_ptr<platform::View> view_;
    std::weak_ptr<InterractorDelegate> delegate_;
    DisplayMode currentVO_ = DisplayMode::Sphere;
    double scale_ = 1.0;
    GLKMatrix4 rotationMatrix_ = GLKMatrix4Identity;
    GLKMatrix4 viewMatrix_ = GLKMatrix4Identity;
    GLKMatrix4 translationMatrix_ = GLKMatrix4Identity;
};
