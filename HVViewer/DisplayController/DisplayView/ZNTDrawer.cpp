#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"

#include "HVViewer/DisplayController/DisplayView/ColorConversion.h"
#include "HVViewer/DisplayController/DisplayView/MeshPasses.h"
#include "HVViewer/DisplayController/DisplayView/UploadEnding.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkPlanes.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "HVViewer/Model/ZNTPlaneVO.h"
#include "HVViewer/Model/ZNTSphericalVO.h"
#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <string>
#include <utility>

namespace {

/// State that all drawers of an environment share: the mesh that was bound last, and its drawer.
struct UnitBuffers {
    platform::MeshBuffers names;
    const ZNTDrawer* binder = nullptr;
    std::int32_t numberOfVertices = 0;
    std::uint32_t textureCoordinateAttribute = 0;
};

UnitBuffers& unitBuffers() {
    return platform::Environment::current().part<UnitBuffers>();
}

void logTextureError(const platform::TextureLoader::Upload& failed) {
    // If the context was lost, the image is loaded again into the new one.
    if (!failed.contextIsGone)
        platform::log(platform::LogLevel::Error, "GL Error = " + std::to_string(failed.glError));
}

void setColorConversion(const UniformTable& uniforms) {
    glUniformMatrix3fv(uniforms[kUniformColorConversion], 1, GL_FALSE,
                       ColorConversation709Apple.data());
}

} // namespace

ZNTDrawer::~ZNTDrawer() {
    removeObservers();
    tearDownGL();
}

void ZNTDrawer::setupDrawerWithType(ContentType type,
                                    const std::shared_ptr<ZNTDisplayView>& forView) {
    glView_ = forView;
    const auto context = forView->context();
    context_ = context;
    contentType_ = type;
    setupVO(DisplayMode::Sphere);
    glTextureLoader_ = std::make_unique<platform::TextureLoader>(context);
    glWatermarkLoader_.reset();
    if (type == ContentType::Photo)
        glWatermarkLoader_ = std::make_unique<platform::TextureLoader>(context);
    setupWatermarkTexture();
    prepareObservers();
}

void ZNTDrawer::setupVO(DisplayMode mode) {
    renderingVO_ = mode;
    if (mode != DisplayMode::Plane) {
        voProvider_ = std::make_shared<ZNTSphericalVO>();
        return;
    }
    voProvider_ = std::make_shared<ZNTPlaneVO>();
    planeScreen_ = platform::Screen::mainScreen().nativeBounds().size;
}

void ZNTDrawer::changeRenderingVO(DisplayMode mode) {
    if (mode == renderingVO_)
        return;
    setupVO(mode);
    replaceBuffers();
    if (const auto view = glView_.lock())
        view->display();
}

void ZNTDrawer::attachPickingPoint(const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint,
                                   const HotSpots& hotSpots) {
    pickingPoint_ = pickingPoint;
    hotSpotGLDrawer_ =
        platform::make<ZNTHotSpotDrawer>(context_.lock(), glView_.lock(), pickingPoint);
    updateHotSpots(hotSpots);
}

void ZNTDrawer::setPickingPoint(const std::shared_ptr<ZNTHotSpotPickingPoint>& point) {
    pickingPoint_ = point;
    if (hotSpotGLDrawer_)
        hotSpotGLDrawer_->setPickingPoint(point);
}

void ZNTDrawer::updateHotSpots(const HotSpots& hotSpots) {
    givenHotSpots_ = hotSpots;
    if (hotSpotGLDrawer_)
        hotSpotGLDrawer_->updateHotSpots(hotSpots);
}

void ZNTDrawer::screenShapeDidChange() {
    if (hotSpotGLDrawer_)
        hotSpotGLDrawer_->screenShapeDidChange();
    const bool isPlane = voProvider_ && renderingVO_ == DisplayMode::Plane;
    if (!isPlane || planeScreen_ == platform::Screen::mainScreen().nativeBounds().size)
        return;
    setupVO(renderingVO_);
    replaceBuffers();
}

void ZNTDrawer::replaceBuffers() {
    const std::vector<platform::MeshBuffers> earlier = std::exchange(madeBuffers_, {});
    bindBuffers();
    if (madeBuffers_.empty()) // without a context the earlier buffers cannot be deleted
        madeBuffers_ = earlier;
    else
        std::for_each(earlier.begin(), earlier.end(), platform::deleteMesh);
}

void ZNTDrawer::bindBuffers() {
    if (!platform::GLContext::setCurrentContext(context_.lock()))
        return;
    glDisable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
    glDisable(GL_CULL_FACE);
    prepareTextureCacheIfNeeded();
    const VisualObjectModel model = voProvider_ ? voProvider_->model() : VisualObjectModel{};
    madeBuffers_.push_back(
        platform::uploadMesh(model, unitBuffers().textureCoordinateAttribute, GL_DYNAMIC_DRAW));
    uploadedMesh_ = voProvider_;
    shareBuffers(madeBuffers_.back());
}

void ZNTDrawer::shareBuffers(const platform::MeshBuffers& buffers) {
    unitBuffers().names = buffers;
    unitBuffers().binder = this;
    unitBuffers().numberOfVertices = voProvider_ ? voProvider_->model().numberOfVertices : 0;
}

std::uint32_t& ZNTDrawer::textureCoordinatePointer() {
    return unitBuffers().textureCoordinateAttribute;
}

void ZNTDrawer::drawImage(const platform::ImagePtr& image) {
    srccgirf_ = image;
    setupTextureWithImage(image);
}

void ZNTDrawer::setupTextureWithImage(const platform::ImagePtr& image) {
    if (!image || !glTextureLoader_)
        return;
    glTextureLoader_->textureWithImage(image, [weak = weak(this)](auto upload) {
        const auto self = weak.lock();
        if (!self)
            return;
        if (!upload.texture)
            return logTextureError(upload);
        self->glTextureI_ = std::move(upload.texture);
        if (const auto view = self->glView_.lock())
            view->display();
        self->srccgirf_.reset();
    });
}

void ZNTDrawer::setupWatermarkTexture() {
    if (contentType_ == ContentType::Video)
        return setupVideoWatermark();
    const int maxSidePx = platform::GLDevice::main().maxTextureSidePx();
    requestBuiltInWatermark(maxSidePx, [weak = weak(this)](const Watermark* watermark) {
        const auto self = weak.lock();
        if (self && watermark && self->glWatermarkLoader_)
            self->loadWatermark(*watermark);
    });
}

void ZNTDrawer::setupVideoWatermark() {
    const int maxSidePx = platform::GLDevice::main().maxTextureSidePx();
    requestBuiltInWatermarkPlanes(maxSidePx, [weak = weak(this)](const WatermarkPlanes* watermark) {
        const auto self = weak.lock();
        if (!self || watermark == nullptr ||
            !platform::GLContext::setCurrentContext(self->context_.lock()))
            return;
        self->videoPlanes_.setWatermark(*watermark);
        if (const auto view = self->glView_.lock())
            view->setNeedsDisplay();
    });
}

void ZNTDrawer::loadWatermark(const Watermark& watermark) {
    const auto keep = [weak = weak(this), &watermark](platform::TextureLoader::Upload upload) {
        const auto self = weak.lock();
        if (!self)
            return;
        if (!upload.texture)
            return logTextureError(upload);
        self->glTextureWatermark_ = std::move(upload.texture);
        self->watermarkCoverage_ = &watermark.coverage;
        if (const auto view = self->glView_.lock())
            view->setNeedsDisplay();
    };
    glWatermarkLoader_->textureWithImage(watermark.picture, keep);
}

void ZNTDrawer::prepareTextureCacheIfNeeded() {
    if (contentType_ == ContentType::Video)
        videoPlanes_.prepareTextureCacheIfNeeded(context_.lock());
}

void ZNTDrawer::drawCVPixelBuffer(const platform::PixelBufferPtr& buffer,
                                  const UniformTable& uniforms) {
    prepareTextureCacheIfNeeded();
    setupCVPixelBuffer(buffer, uniforms);
}

void ZNTDrawer::setupCVPixelBuffer(const platform::PixelBufferPtr& buffer,
                                   const UniformTable& uniforms) {
    if (!buffer)
        return;
    if (!videoPlanes_.hasTextureCache())
        return platform::log(platform::LogLevel::Error, "Empty video texture cache provided");
    if (!platform::GLContext::setCurrentContext(context_.lock()))
        return;
    videoPlanes_.upload(buffer);
    if (!madeBuffers_.empty())
        endUpload(madeBuffers_.back());
    if (program_ == 0)
        return;
    glUseProgram(program_);
    setColorConversion(uniforms);
    glUniform1i(uniforms[kUniformColorPicking], enableColoring_);
}

void ZNTDrawer::cleanUpTextures() {
    videoPlanes_.cleanUpTextures();
}

void ZNTDrawer::useOwnBuffers() {
    const bool uploaded = uploadedMesh_ == voProvider_ && !madeBuffers_.empty();
    // All spheres are equal, so the mesh of another drawer can be used. Planes may differ in shape.
    const bool equalSphere =
        renderingVO_ != DisplayMode::Plane && unitBuffers().binder != nullptr &&
        unitBuffers().numberOfVertices == voProvider_->model().numberOfVertices;
    if (equalSphere || (uploaded && unitBuffers().binder == this))
        return;
    // Two drawers with different modes alternate in every frame, so the mesh is not uploaded again.
    if (uploaded)
        shareBuffers(madeBuffers_.back());
    else
        bindBuffers();
}

void ZNTDrawer::performBufferDrawingWithUniforms(const UniformTable& uniforms,
                                                 const GLKMatrix4& modelProjectionMatrix,
                                                 std::uint32_t withProgramm) {
    if (!voProvider_)
        return;
    useOwnBuffers();
    platform::GLDevice::main().bindVertexArray(unitBuffers().names.vertexArray);
    glUseProgram(withProgramm);
    program_ = withProgramm;
    glUniform1i(uniforms[kUniformColorPicking], enableColoring_);
    if (contentType_ == ContentType::Photo && glTextureI_)
        drawPhoto(uniforms, modelProjectionMatrix);
    else if (contentType_ == ContentType::Video && videoPlanes_.hasFrame())
        drawVideo(uniforms, modelProjectionMatrix);
}

void ZNTDrawer::drawPhoto(const UniformTable& uniforms, const GLKMatrix4& matrix) {
    const MeshPasses passes = planPasses(voProvider_->model(), matrix, watermarkCoverage_);
    glActiveTexture(GL_TEXTURE0);
    glUniformMatrix4fv(uniforms[kUniformContentMatrix], 1, GL_FALSE, matrix.m);
    glBindTexture(GL_TEXTURE_2D, glTextureI_->name());
    drawRuns(passes.content);

    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glActiveTexture(GL_TEXTURE0);
    glUniformMatrix4fv(uniforms[kUniformWatermarkMatrix], 1, GL_FALSE, matrix.m);
    glBindTexture(GL_TEXTURE_2D, watermarkTextureName());
    drawRuns(passes.watermark);
    glDisable(GL_BLEND);
}

void ZNTDrawer::drawVideo(const UniformTable& uniforms, const GLKMatrix4& matrix) {
    const MeshPasses passes =
        planPasses(voProvider_->model(), matrix, videoPlanes_.watermarkCoverage());
    videoPlanes_.bindTextures();
    // The first frame is uploaded before there is a program, so its matrix is not set yet.
    setColorConversion(uniforms);
    glUniformMatrix4fv(uniforms[kUniformContentMatrix], 1, GL_FALSE, matrix.m);
    glUniform1i(uniforms[kUniformContentLuma], 0);
    glUniform1i(uniforms[kUniformContentChroma], 1);
    drawRuns(passes.content);
    if (!videoPlanes_.hasWatermark())
        return;

    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_SRC_ALPHA);
    glUniformMatrix4fv(uniforms[kUniformWatermarkMatrix], 1, GL_FALSE, matrix.m);
    glUniform1i(uniforms[kUniformWatermarkLuma], 2);
    glUniform1i(uniforms[kUniformWatermarkChroma], 3);
    drawRuns(passes.watermark);
    glDisable(GL_BLEND);
}

std::uint32_t ZNTDrawer::watermarkTextureName() {
    if (glTextureWatermark_) {
        transparentTexture_.reset();
        return glTextureWatermark_->name();
    }
    // Texture name 0 samples opaque black, which would hide the content although there is no
    // watermark.
    if (!transparentTexture_)
        transparentTexture_ = platform::TextureLoader::transparentTexture(context_.lock());
    return transparentTexture_->name();
}

void ZNTDrawer::prepareObservers() {
    auto& center = platform::NotificationCenter::defaultCenter();
    // The notifications are crossed on purpose: the content uses picking colours while the normal
    // drawing of markers is disabled.
    center.addObserver(shared(this), ZNTHotSpotDrawerDisableDrawing,
                       [this](const auto&) { didReceiveEnableColoringMessage(); });
    center.addObserver(shared(this), ZNTHotSpotDrawerEnableDrawing,
                       [this](const auto&) { didReceiveDisableColoringMessage(); });
}

void ZNTDrawer::removeObservers() {
    platform::NotificationCenter::defaultCenter().removeObserver(this);
}

void ZNTDrawer::tearDownGL() {
    const bool current = platform::GLContext::setCurrentContext(context_.lock());
    for (const platform::MeshBuffers& buffers : madeBuffers_) {
        if (current)
            platform::deleteMesh(buffers);
    }
    madeBuffers_.clear();
    uploadedMesh_.reset();
    // The GL names are deleted: another drawer that used them binds its own before it draws.
    if (unitBuffers().binder == this)
        unitBuffers() = {{}, nullptr, 0, unitBuffers().textureCoordinateAttribute};
    videoPlanes_.reset();
    glTextureI_.reset();
    glTextureWatermark_.reset();
    transparentTexture_.reset();
    if (hotSpotGLDrawer_)
        hotSpotGLDrawer_->tearDownGL();
}
