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

/// A marker on the sphere: a picture at two angles, facing the middle.
///
/// Angles are radians from straight ahead: a positive horizontal one lies to the left, a positive
/// vertical one further down. At scale 1 the quad is 0.2 of the sphere's radius wide and, by the
/// shape of the screen, 0.4 of the radius times the screen's shorter side over its longer one high.
///
/// Owner:  the host application, and the controllers that it gives the hot spot to. All hot spots
///         with the same picture share one texture, for as long as anything shows one of them.
/// Thread: main.
class ZANTO_EXPORT ZNTHotSpot : public platform::Object {
public:
    /// With a picture of the application's bundle: `platform::imageNamed`.
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
    /// The same two by other names.
    [[nodiscard]] float angleV() const { return verticalOffset_; }
    void setAngleV(float radians) { verticalOffset_ = radians; }
    [[nodiscard]] float angleH() const { return horizontalOffset_; }
    void setAngleH(float radians) { horizontalOffset_ = radians; }

    /// Size factor, and further ones for width and height.
    [[nodiscard]] float scale() const { return scale_; }
    void setScale(float scale) { scale_ = scale; }
    [[nodiscard]] float xTransform() const { return xTransform_; }
    void setXTransform(float factor) { xTransform_ = factor; }
    [[nodiscard]] float yTransform() const { return yTransform_; }
    void setYTransform(float factor) { yTransform_ = factor; }
    /// Kept for the host: nothing reads it.
    [[nodiscard]] double selectionScale() const { return selectionScale_; }
    void setSelectionScale(double scale) { selectionScale_ = scale; }

    /// Position in the list that it was shown with; what a selection reports beside the name.
    [[nodiscard]] std::uint32_t indexID() const { return indexID_; }
    void setIndexID(std::uint32_t index) { indexID_ = index; }
    [[nodiscard]] const std::string& hotSpotName() const { return hotSpotName_; }
    void setHotSpotName(std::string name) { hotSpotName_ = std::move(name); }
    /// The name counts if it is not empty, else the image.
    [[nodiscard]] const std::string& textureImageName() const { return textureImageName_; }
    void setTextureImageName(std::string name) { textureImageName_ = std::move(name); }
    [[nodiscard]] platform::ImagePtr textureImage() const { return textureImage_; }
    void setTextureImage(platform::ImagePtr image) { textureImage_ = std::move(image); }

    /// Uploads the picture in place of an earlier texture, scaled down where it is over the limit
    /// of the GL context, which is current.
    ///
    /// Errors: false, a log line and the GL name 0 when there is no picture, no context, or the
    ///         upload fails.
    bool setupTexture();
    /// Lets go of the texture; the GL name is 0 afterwards.
    void removeSpotTexture() { texture_.reset(); }
    /// 0 while there is none.
    [[nodiscard]] std::uint32_t textureName() const;
    /// The same for hot spots that share it.
    [[nodiscard]] std::shared_ptr<const platform::TextureInfo> texture() const { return texture_; }

    /// Places the quad in a scene.
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
    std::uint32_t timesShown_ = 0; // in the lists of all drawers
};
