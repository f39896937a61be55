#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Graphics/GLKMath.h"
#include "Platform/Imaging/Image.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace platform {
class TextureInfo;
}

/// A marker on the sphere: an image at two angles that faces the centre.
///
/// Angles are in radians from straight ahead: a positive horizontal angle is to the left, a
/// positive vertical angle is downward. At scale 1 the quad is 0.2 sphere radii wide. Its height is
/// 0.4 sphere radii times the ratio of the screen's shorter side to its longer side.
///
/// Owner:  the host application, and the controllers that it passes the hot spot to. All hot spots
///         with the same image share one texture, which lives as long as one of them is shown.
/// Thread: main.
class ZANTO_EXPORT ZNTHotSpot : public platform::Object {
public:
    /// The image is a resource of the application's bundle, found by `platform::imageNamed`.
    [[nodiscard]] static std::shared_ptr<ZNTHotSpot>
    hotSpotWithTextureNamed(const std::string& name, float verticalPosition,
                            float horizontalPosition);
    [[nodiscard]] static std::shared_ptr<ZNTHotSpot>
    hotSpotWithTextureImage(const platform::ImagePtr& image, float verticalPosition,
                            float horizontalPosition);

    [[nodiscard]] float verticalOffset() const { return verticalOffset_; }
    void setVerticalOffset(float radians) { verticalOffset_ = radians; }
    [[nodiscard]] float horizontalOffset() const { return horizontalOffset_; }
    void setHorizontalOffset(float radians) { horizontalOffset_ = radians; }
    /// Aliases of the two offsets above.
    [[nodiscard]] float angleV() const { return verticalOffset_; }
    void setAngleV(float radians) { verticalOffset_ = radians; }
    [[nodiscard]] float angleH() const { return horizontalOffset_; }
    void setAngleH(float radians) { horizontalOffset_ = radians; }

    /// The size factor, and extra factors for width and height.
    [[nodiscard]] float scale() const { return scale_; }
    void setScale(float scale) { scale_ = scale; }
    [[nodiscard]] float xTransform() const { return xTransform_; }
    void setXTransform(float factor) { xTransform_ = factor; }
    [[nodiscard]] float yTransform() const { return yTransform_; }
    void setYTransform(float factor) { yTransform_ = factor; }
    /// Stored for the host application; the library does not use it.
    [[nodiscard]] double selectionScale() const { return selectionScale_; }
    void setSelectionScale(double scale) { selectionScale_ = scale; }

    /// The position in the list that is shown. A selection reports it together with the name.
    [[nodiscard]] std::uint32_t indexID() const { return indexID_; }
    void setIndexID(std::uint32_t index) { indexID_ = index; }
    [[nodiscard]] const std::string& hotSpotName() const { return hotSpotName_; }
    void setHotSpotName(std::string name) { hotSpotName_ = std::move(name); }
    /// The name takes precedence over the image unless it is empty.
    [[nodiscard]] const std::string& textureImageName() const { return textureImageName_; }
    void setTextureImageName(std::string name) { textureImageName_ = std::move(name); }
    [[nodiscard]] platform::ImagePtr textureImage() const { return textureImage_; }
    void setTextureImage(platform::ImagePtr image) { textureImage_ = std::move(image); }

    /// Uploads the image and replaces an earlier texture. An image over the texture limit of the GL
    /// context is scaled down. The GL context must be current.
    ///
    /// Errors: logs an error, returns false and leaves the texture name 0 if there is no image or
    ///         no context, or if the upload fails.
    bool setupTexture();
    /// Releases the texture; its name is 0 afterwards.
    void removeSpotTexture() { texture_.reset(); }
    /// The GL name of the texture; 0 if there is none.
    [[nodiscard]] std::uint32_t textureName() const;
    /// Hot spots that share a texture return the same object.
    [[nodiscard]] std::shared_ptr<const platform::TextureInfo> texture() const { return texture_; }

    /// Computes the matrix of the quad for a model-view-projection matrix of the scene.
    void updateWithModelViewProjection(const GLKMatrix4& scene);
    [[nodiscard]] GLKMatrix4 hotSpotModelViewProjectionMatrix() const { return matrix_; }

private:
    friend class ZNTHotSpotDrawer;

    float verticalOffset_ = 0;
    float horizontalOffset_ = 0;
    float scale_ = 1;
    float xTransform_ = 1;
    float yTransform_ = 1;
    double selectionScale_ = 0;
    std::uint32_t indexID_ = 0;
    std::string hotSpotName_;
    std::string textureImageName_;
    platform::ImagePtr textureImage_;
    std::shared_ptr<platform::TextureInfo> texture_;
    GLKMatrix4 matrix_{};
    std::uint32_t timesShown_ = 0; // by all drawers together
};
