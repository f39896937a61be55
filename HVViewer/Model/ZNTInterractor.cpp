#include "HVViewer/Model/ZNTInterractor.h"

#include "Platform/Interface/View.h"

#include <numbers>
#include <utility>

namespace {

constexpr double kLittlePlanetScale = 0.8F;
constexpr float kQuarterTurn = std::numbers::pi_v<float> / 2;

} // namespace

std::shared_ptr<ZNTInterractor>
ZNTInterractor::interractorWithView(const std::weak_ptr<platform::View>& view,
                                    const std::weak_ptr<InterractorDelegate>& delegate) {
    return platform::make<ZNTInterractor>(view, delegate);
}

ZNTInterractor::ZNTInterractor(std::weak_ptr<platform::View> view,
                               std::weak_ptr<InterractorDelegate> delegate)
    : view_(std::move(view)), delegate_(std::move(delegate)) {}

void ZNTInterractor::setCurrentVO(DisplayMode mode) {
    currentVO_ = mode;
    scale_ = 1.0;
    viewMatrix_ = GLKMatrix4Identity;
    translationMatrix_ = GLKMatrix4Identity;
    rotationMatrix_ = GLKMatrix4Identity;
    if (mode == DisplayMode::LittlePlanet) {
        scale_ = kLittlePlanetScale;
        viewMatrix_ = GLKMatrix4MakeRotation(kQuarterTurn, 1, 0, 0);
    }
}

void ZNTInterractor::setNeedsUpdateMatrix() {
    if (const auto delegate = delegate_.lock())
        delegate->matrixUpdated();
}
