#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"

#include "HVViewer/Model/HotSpot/MarkerTextures.h"
#include "Platform/Graphics/TextureInfo.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace {

constexpr float kQuarterTurn = std::numbers::pi_v<float> / 2;
constexpr double kSizeAtScaleOne = 0.2;

} // namespace

std::shared_ptr<ZNTHotSpot> ZNTHotSpot::hotSpotWithTextureNamed(const std::string& name,
                                                                float verticalPosition,
                                                                float horizontalPosition) {
    auto spot = platform::make<ZNTHotSpot>();
    spot->verticalOffset_ = verticalPosition;
    spot->horizontalOffset_ = horizontalPosition;
    spot->textureImageName_ = name;
    return spot;
}

std::shared_ptr<ZNTHotSpot> ZNTHotSpot::hotSpotWithTextureImage(const platform::ImagePtr& image,
                                                                float verticalPosition,
                                                                float horizontalPosition) {
    auto spot = hotSpotWithTextureNamed("", verticalPosition, horizontalPosition);
    spot->textureImage_ = image;
    return spot;
}

bool ZNTHotSpot::setupTexture() {
    // Kept until the new texture exists, so that the same image is not uploaded again.
    const auto earlier = std::exchange(texture_, nullptr);
    texture_ = MarkerTextures::shared().textureWith(textureImageName_, textureImage_);
    return texture_ != nullptr;
}

std::uint32_t ZNTHotSpot::textureName() const {
    return texture_ ? texture_->name() : 0;
}

void ZNTHotSpot::updateWithModelViewProjection(const GLKMatrix4& scene) {
    const float theta = kQuarterTurn + verticalOffset_;
    const float phi = kQuarterTurn + horizontalOffset_;
    const float x = std::sin(theta) * std::cos(phi);
    const float y = std::sin(theta) * std::sin(phi);
    const float z = std::cos(theta);
    GLKMatrix4 matrix = GLKMatrix4Translate(scene, x, y, z);
    matrix = GLKMatrix4Rotate(matrix, horizontalOffset_, 0, 0, 1);
    const double tilt = std::numbers::pi / 2 - verticalOffset_;
    matrix = GLKMatrix4Rotate(matrix, static_cast<float>(tilt), 1, 0, 0);
    const auto size = static_cast<float>(scale_ * kSizeAtScaleOne);
    matrix = GLKMatrix4Scale(matrix, size, size, size);
    matrix_ = GLKMatrix4Scale(matrix, xTransform_, yTransform_, 1);
}
