#pragma once

#include "HVViewer/DisplayController/DisplayView/HVVProgram/UniformTable.h"
#include "HVViewer/DisplayController/DisplayView/VideoPlanes.h"
#include "HVViewer/Model/ContentType.h"
#include "HVViewer/Model/DisplayMode.h"
#include "HVViewer/Model/ZNTVisualObjectProtocol.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Graphics/GLKMath.h"
#include "Platform/Graphics/MeshBuffers.h"
#include "Platform/Graphics/TextureLoader.h"
#include "Platform/Imaging/Image.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <cstdint>
#include <memory>
#include <vector>

class QuadMask;
class ZNTDisplayView;
class ZNTHotSpot;
class ZNTHotSpotDrawer;
class ZNTHotSpotPickingPoint;
struct Watermark;

namespace platform {
class GLContext;
}

/// Draws the content. It keeps the mesh of the display mode in GL buffers, keeps the content and
/// the watermark in textures, and draws the mesh once with each of them.
///
/// All drawers of an environment share the GL names of the mesh in use: the last `bindBuffers()`
/// wins, and a drawer with a different mesh binds its own before it draws.
///
/// Owner:  the display view. View and context are held weakly. Create it with `platform::make`.
/// Thread: main.
class ZNTDrawer : public platform::Object {
public:
    using HotSpots = std::vector<std::shared_ptr<ZNTHotSpot>>;

    ZNTDrawer() = default;
    ~ZNTDrawer() override;

    /// Sets up the sphere mesh, the loaders, the watermark and the observers. Called again whenever
    /// the view shows new content.
    void setupDrawerWithType(ContentType type, const std::shared_ptr<ZNTDisplayView>& forView);
    /// Builds the mesh of a mode: the plane for mode 0, the sphere for any other mode.
    void setupVO(DisplayMode mode);
    /// The same, followed by an upload and a redraw. A no-op if the mode is the current one.
    void changeRenderingVO(DisplayMode mode);
    /// Rebuilds the plane if the shape of the screen has changed.
    void screenShapeDidChange();
    /// Uploads the mesh. Earlier buffers are deleted when the mode or the shape of the screen
    /// changes, and by `tearDownGL`.
    void bindBuffers();
    /// The attribute index of the texture coordinates. Building the program sets it.
    [[nodiscard]] static std::uint32_t& textureCoordinatePointer();

    /// Uploads a video frame in place of the previous one, then sets the uniforms of the program
    /// that drew the last frame. Null keeps the previous frame.
    ///
    /// Errors: logs an error, and there is no frame, if the drawer is not set up for video. Does
    ///         nothing if its context no longer exists. Logs an error if a plane cannot be
    ///         uploaded.
    void drawCVPixelBuffer(const platform::PixelBufferPtr& buffer, const UniformTable& uniforms);
    void setupCVPixelBuffer(const platform::PixelBufferPtr& buffer, const UniformTable& uniforms);
    /// Creates the texture cache that video content needs. The GL context must be current.
    void prepareTextureCacheIfNeeded();
    /// Releases the textures of the frame and of the watermark.
    void cleanUpTextures();

    /// Shows an image as soon as its texture is uploaded. Until then the previous image, if any, is
    /// shown.
    void drawImage(const platform::ImagePtr& image);
    void setupTextureWithImage(const platform::ImagePtr& image);
    void setupWatermarkTexture();

    /// Draws one frame: the content, then the watermark blended over it.
    void performBufferDrawingWithUniforms(const UniformTable& uniforms,
                                          const GLKMatrix4& modelProjectionMatrix,
                                          std::uint32_t withProgramm);

    /// Attaches hot spots to the view, with a new hot spot drawer.
    void attachPickingPoint(const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint,
                            const HotSpots& hotSpots);
    void updateHotSpots(const HotSpots& hotSpots);
    /// The list that was passed last, even if some of it could not be shown.
    [[nodiscard]] const HotSpots& givenHotSpots() const { return givenHotSpots_; }
    /// Null before hot spots are attached.
    [[nodiscard]] std::shared_ptr<ZNTHotSpotDrawer> hotSpotGLDrawer() const {
        return hotSpotGLDrawer_;
    }
    [[nodiscard]] std::shared_ptr<ZNTHotSpotPickingPoint> pickingPoint() const {
        return pickingPoint_;
    }
    /// The point for automatic picking. It takes effect with the next list or switch.
    void setPickingPoint(const std::shared_ptr<ZNTHotSpotPickingPoint>& point);

    void prepareObservers();
    void removeObservers();
    void didReceiveEnableColoringMessage() { enableColoring_ = 1; }
    void didReceiveDisableColoringMessage() { enableColoring_ = 0; }
    /// Deletes every GL object that this drawer made.
    void tearDownGL();

    [[nodiscard]] ContentType contentType() const { return contentType_; }
    [[nodiscard]] DisplayMode renderingVO() const { return renderingVO_; }
    [[nodiscard]] std::shared_ptr<ZNTVisualObjectProtocol> voProvider() const {
        return voProvider_;
    }
    [[nodiscard]] std::shared_ptr<platform::TextureInfo> glTextureI() const { return glTextureI_; }
    [[nodiscard]] std::shared_ptr<platform::TextureInfo> glTextureWatermark() const {
        return glTextureWatermark_;
    }
    [[nodiscard]] std::int32_t enableColoring() const { return enableColoring_; }

private:
    /// Calls `bindBuffers()` for a new mesh and deletes the earlier buffers.
    void replaceBuffers();
    void shareBuffers(const platform::MeshBuffers& buffers);
    void useOwnBuffers();
    void drawPhoto(const UniformTable& uniforms, const GLKMatrix4& matrix);
    void drawVideo(const UniformTable& uniforms, const GLKMatrix4& matrix);
    void loadWatermark(const Watermark& watermark);
    void setupVideoWatermark();
    [[nodiscard]] std::uint32_t watermarkTextureName();

    platform::ImagePtr srccgirf_; // kept while its texture is being loaded
    std::shared_ptr<platform::TextureInfo> glTextureI_;
    std::shared_ptr<platform::TextureInfo> glTextureWatermark_;
    const QuadMask* watermarkCoverage_ = nullptr; // null until the texture is loaded
    std::shared_ptr<platform::TextureInfo> transparentTexture_;
    std::unique_ptr<platform::TextureLoader> glTextureLoader_;
    std::unique_ptr<platform::TextureLoader> glWatermarkLoader_;
    VideoPlanes videoPlanes_;
    std::int32_t enableColoring_ = 0;
    std::uint32_t program_ = 0; // of the last frame

    std::shared_ptr<ZNTHotSpotDrawer> hotSpotGLDrawer_;
    HotSpots givenHotSpots_;
    std::shared_ptr<ZNTHotSpotPickingPoint> pickingPoint_;
    std::shared_ptr<ZNTVisualObjectProtocol> voProvider_;
    std::weak_ptr<ZNTDisplayView> glView_;
    std::weak_ptr<platform::GLContext> context_;
    DisplayMode renderingVO_ = DisplayMode::Plane;
    ContentType contentType_ = ContentType::Undefined;
    platform::Size planeScreen_;
    std::vector<platform::MeshBuffers> madeBuffers_; // the last one holds `uploadedMesh_`
    std::shared_ptr<ZNTVisualObjectProtocol> uploadedMesh_;
};
