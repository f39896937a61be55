#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"

#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "HVViewer/Model/ZNTHotSpotPlaneVO.h"
#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Foundation/Timer.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Interface/GLView.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

using platform::GLDevice;

namespace {

constexpr const char* kFileName = "ZNTHotSpotDrawer";
constexpr GLuint kTextureUnit = 4;
constexpr double kPickingInterval = 0.33F;
constexpr const char* kPickingQueueLabel = "hotSpotDrawerQueuq.PickingProcess.zantoPlayer";

/// An offset that keeps all indices distinct from black, which is the colour between the markers.
constexpr std::uint32_t kFirstRed = 50;

/// The red value that encodes an index. Above 205 it exceeds 1 and is drawn as 1.
float redOf(std::uint32_t index) {
    return static_cast<float>(index + kFirstRed) / 255.0F;
}

/// Frustum culling: whether all corners are outside of the same frustum plane, by more than a
/// margin for rounding. Most markers on a full sphere are, and this test is cheaper than a draw
/// call for each.
bool isOutOfSight(const VisualObjectModel& quad, const GLKMatrix4& matrix) {
    constexpr float margin = 1e-4F;
    std::array<bool, 6> isBeyond{true, true, true, true, true, true};
    for (std::ptrdiff_t i = 0; i < quad.numberOfVertices; ++i) {
        const float* vertex = quad.vertices + 3 * i;
        const GLKVector4 clip =
            GLKMatrix4MultiplyVector4(matrix, GLKVector4Make(vertex[0], vertex[1], vertex[2], 1));
        const float w = clip.v[3];
        const std::array<float, 6> inside{w + clip.v[0], w - clip.v[0], w + clip.v[1],
                                          w - clip.v[1], w + clip.v[2], w - clip.v[2]};
        for (std::size_t plane = 0; plane < inside.size(); ++plane)
            isBeyond[plane] = isBeyond[plane] && inside[plane] < -margin;
    }
    return std::find(isBeyond.begin(), isBeyond.end(), true) != isBeyond.end();
}

/// Disables dithering, which could change a red value to an adjacent one that encodes another hot
/// spot.
class WithoutDithering {
public:
    WithoutDithering() : wasOn_(glIsEnabled(GL_DITHER) == GL_TRUE) { glDisable(GL_DITHER); }
    ~WithoutDithering() {
        if (wasOn_)
            glEnable(GL_DITHER);
    }
    WithoutDithering(const WithoutDithering&) = delete;
    WithoutDithering& operator=(const WithoutDithering&) = delete;

private:
    bool wasOn_;
};

void warnOfAngles(const ZNTHotSpot& spot) {
    if (!std::isfinite(spot.verticalOffset()) || !std::isfinite(spot.horizontalOffset()))
        platform::log(platform::LogLevel::Warning,
                      "hot spots: \"" + spot.hotSpotName() + "\", index " +
                          std::to_string(spot.indexID()) +
                          ", has an angle that is not a number; it is not drawn");
}

platform::NotificationCenter& notifications() {
    return platform::NotificationCenter::defaultCenter();
}

} // namespace

ZNTHotSpotDrawer::ZNTHotSpotDrawer(const std::shared_ptr<platform::GLContext>& context,
                                   const std::shared_ptr<platform::GLView>& view,
                                   std::shared_ptr<ZNTHotSpotPickingPoint> pickingPoint)
    : context_(context), glView_(view), pickingPoint_(std::move(pickingPoint)) {
    if (!context)
        platform::failAssertion(kFileName, __LINE__, "context cant be nil");
    if (!view)
        platform::failAssertion(kFileName, __LINE__, "drawing view cnat be nil");
}

ZNTHotSpotDrawer::~ZNTHotSpotDrawer() {
    tearDownGL();
}

void ZNTHotSpotDrawer::init() {
    Object::init();
    setupGL();
}

// Set-up and teardown

void ZNTHotSpotDrawer::setupGL() {
    if (!platform::GLContext::setCurrentContext(context_.lock()))
        return;
    generation_ = GLDevice::main().generation();
    canDraw_ = markerProgramm_.loadShaders();
    bindBuffer();
}

void ZNTHotSpotDrawer::bindBuffer() {
    hotSpotModel_ = std::make_shared<ZNTHotSpotPlaneVO>();
    modelScreen_ = platform::Screen::mainScreen().nativeBounds().size;
    buffers_ = platform::uploadMesh(hotSpotModel_->model(), markerProgramm_.textureCoordinates(),
                                    GL_STATIC_DRAW);
}

void ZNTHotSpotDrawer::screenShapeDidChange() {
    const bool isSame = modelScreen_ == platform::Screen::mainScreen().nativeBounds().size;
    if (isSame || isTornDown_ || !platform::GLContext::setCurrentContext(context_.lock()))
        return;
    platform::deleteMesh(buffers_);
    bindBuffer();
}

void ZNTHotSpotDrawer::removeTextures() {
    for (const auto& spot : std::exchange(hotSpots_, {})) {
        // Another drawer may still show it.
        if (--spot->timesShown_ == 0)
            spot->removeSpotTexture();
    }
}

void ZNTHotSpotDrawer::tearDownGL() {
    if (std::exchange(isTornDown_, true))
        return;
    removeTextures();
    if (pickingTimer_)
        pickingTimer_->invalidate();
    pickingTimer_.reset();
    const bool isOurs = platform::GLContext::setCurrentContext(context_.lock()) &&
                        generation_ == GLDevice::main().generation();
    if (!isOurs)
        return markerProgramm_.forget();
    // The buffer of texture coordinates is kept, because the last user of the vertex array may
    // still read it.
    glDeleteBuffers(1, &buffers_.positions);
    GLDevice::main().deleteVertexArrays(1, &buffers_.vertexArray);
    markerProgramm_.tearDown();
}

// The list

void ZNTHotSpotDrawer::addHotSpot(const std::shared_ptr<ZNTHotSpot>& spot) {
    if (isTornDown_)
        return;
    if (!spot)
        return platform::log(platform::LogLevel::Warning,
                             "hot spots: one of the list is null; it is left out");
    spot->setIndexID(static_cast<std::uint32_t>(hotSpots_.size()));
    warnOfAngles(*spot);
    if (!platform::GLContext::setCurrentContext(context_.lock()) || !spot->setupTexture())
        return;
    ++spot->timesShown_;
    hotSpots_.push_back(spot);
}

void ZNTHotSpotDrawer::updateHotSpots(const HotSpots& spots) {
    if (!updateInProgress_) {
        updateInProgress_ = true;
        removeTextures();
        for (const auto& spot : spots)
            addHotSpot(spot);
        updateInProgress_ = false;
    }
    platform::MainQueue::main().async([weak = weak(this), hasSpots = !spots.empty()] {
        if (const auto self = weak.lock())
            self->restartTimer(hasSpots);
    });
}

void ZNTHotSpotDrawer::restartTimer(bool hasSpots) {
    if (pickingTimer_)
        pickingTimer_->invalidate();
    pickingTimer_.reset();
    if (!hasSpots || !enableAutoPickingTest_ || !pickingPoint_ || isTornDown_)
        return;
    warnOfPointOutside();
    pickingTimer_ =
        platform::Timer::scheduledTimer(platform::fromSeconds(kPickingInterval),
                                        platform::Timer::Repeats::Yes, [weak = weak(this)] {
                                            if (const auto self = weak.lock())
                                                self->objecPickTestForPickingPoint();
                                        });
}

void ZNTHotSpotDrawer::warnOfPointOutside() const {
    const auto isInside = [](double fraction) { return fraction >= 0 && fraction <= 1; };
    const double x = pickingPoint_->hKoef();
    const double y = pickingPoint_->vKoef();
    if (!isInside(x) || !isInside(y))
        platform::log(platform::LogLevel::Warning,
                      "hot spots: the picking point (" + std::to_string(x) + ", " +
                          std::to_string(y) +
                          ") is not within 0 to 1; automatic picking finds nothing there");
}

void ZNTHotSpotDrawer::setEnableAutoPickingTest(bool enable) {
    enableAutoPickingTest_ = enable;
    platform::MainQueue::main().async([weak = weak(this)] {
        if (const auto self = weak.lock())
            self->restartTimer(!self->hotSpots_.empty());
    });
}

// Drawing

void ZNTHotSpotDrawer::performDrawMarkersWithProjection(const GLKMatrix4& scene) {
    if (hotSpots_.empty() || updateInProgress_ || !canDraw_)
        return;
    glUseProgram(markerProgramm_.name());
    GLDevice::main().bindVertexArray(buffers_.vertexArray);
    std::optional<WithoutDithering> exactColors;
    if (enableColor_)
        exactColors.emplace();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glActiveTexture(GL_TEXTURE0 + kTextureUnit);
    glUniform1i(markerProgramm_.uniforms().texture, kTextureUnit);
    glUniform1i(markerProgramm_.uniforms().enableColorPicking, enableColor_ ? 1 : 0);
    for (const auto& spot : hotSpots_)
        drawMarker(*spot, scene);
    glBindTexture(GL_TEXTURE_2D, 0);
    glActiveTexture(GL_TEXTURE0);
    glDisable(GL_BLEND);
    if (!enableColor_)
        return;
    // Observers of this notification may replace the list or start another picking pass.
    std::vector<DrawnSpot> drawn;
    for (const auto& spot : hotSpots_)
        drawn.push_back({spot->indexID(), spot});
    endColorPass();
    drawnForPicking_ = std::move(drawn);
}

void ZNTHotSpotDrawer::drawMarker(ZNTHotSpot& spot, const GLKMatrix4& scene) const {
    const VisualObjectModel& quad = hotSpotModel_->model();
    spot.updateWithModelViewProjection(scene);
    const GLKMatrix4 matrix = spot.hotSpotModelViewProjectionMatrix();
    if (isOutOfSight(quad, matrix))
        return;
    glUniformMatrix4fv(markerProgramm_.uniforms().matrix, 1, GL_FALSE, matrix.m);
    if (enableColor_)
        glUniform3f(markerProgramm_.uniforms().color, redOf(spot.indexID()), 255.0F, 0.0F);
    else
        glBindTexture(GL_TEXTURE_2D, spot.textureName());
    glDrawArrays(GL_TRIANGLES, 0, quad.numberOfVertices);
}

void ZNTHotSpotDrawer::endColorPass() {
    enableColor_ = false;
    notifications().post(ZNTHotSpotDrawerEnableDrawing);
}

// Selection

std::optional<GLKVector4> ZNTHotSpotDrawer::snapshotDorPicking(platform::Point point) {
    const auto view = glView_.lock();
    if (!view)
        return std::nullopt;
    enableColor_ = true;
    notifications().post(ZNTHotSpotDrawerDisableDrawing);
    // A frame that an observer draws uses up the picking colours. The frame below then shows
    // images, whose colours encode nothing.
    drawnForPicking_.clear();
    const auto pixel = view->pixelAt(point);
    // If there are no markers, no pass has switched the picking colours of the content off.
    if (enableColor_)
        endColorPass();
    if (!pixel)
        return std::nullopt;
    const auto channel = [&pixel](std::size_t i) {
        return static_cast<float>((*pixel)[i] / 255.0);
    };
    return GLKVector4Make(channel(0), channel(1), channel(2), channel(3));
}

void ZNTHotSpotDrawer::pickAt(platform::Point point, bool tap) {
    const auto self = shared(this); // observers may release the drawer
    const auto color = snapshotDorPicking(point);
    const auto drawn = std::exchange(drawnForPicking_, {});
    if (color)
        detectSelectionFromTapColot(*color, drawn, tap);
}

void ZNTHotSpotDrawer::objectPickTestForPixelAtX(int x, int y) {
    pickAt({static_cast<double>(x), static_cast<double>(y)}, true);
}

void ZNTHotSpotDrawer::objecPickTestForPickingPoint() {
    if (hotSpots_.empty() || !pickingPoint_)
        return;
    // Runs on the calling thread, where the GL context is current.
    platform::DispatchQueue::sync(kPickingQueueLabel, [this] {
        pickAt({pickingPoint_->xPosition(), pickingPoint_->yPosition()}, false);
    });
}

void ZNTHotSpotDrawer::detectSelectionFromTapColot(const GLKVector4& color,
                                                   const std::vector<DrawnSpot>& drawn, bool tap) {
    const auto hit = std::find_if(drawn.begin(), drawn.end(), [&color](const DrawnSpot& spot) {
        return redOf(spot.index) == color.v[0];
    });
    if (hit == drawn.end())
        return;
    if (!tap && !dwellsOn(hit->index))
        return;
    notifications().post(ZNTHotSpotDrawerDetectHotSpotSelection,
                         {{ZNTHotSpotDrawerHotSpotNameKey, hit->spot->hotSpotName()},
                          {ZNTHotSpotDrawerHotSpotIndexKey, std::int64_t{hit->index}},
                          {ZNTHotSpotDrawerTapKey, tap}});
}

bool ZNTHotSpotDrawer::dwellsOn(std::uint32_t index) {
    if (!pickingPoint_)
        return false; // removed during the picking pass
    if (index != pickingHotSpotIndex_) {
        pickingOccurency_ = 0;
        pickingHotSpotIndex_ = index;
        return false;
    }
    if (++pickingOccurency_ < pickingPoint_->rejectRate())
        return false;
    pickingOccurency_ = 0;
    return true;
}
