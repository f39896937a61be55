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

/// Puts the content on screen: keeps the mode's mesh in GL buffers and the content and the
/// watermark in textures, and draws the mesh once with each.
///
/// The names of the mesh in use belong to the unit, not to an instance: with several drawers the
/// last `bindBuffers()` wins, and a drawer whose mesh is another one binds its own before it draws.
///
/// Owner:  the display view; view and context are held weakly. Made with `platform::make`.
/// Thread: main.
class ZNTDrawer : public platform::Object {
public:
    using HotSpots = std::vector<std::shared_ptr<ZNTHotSpot>>;

    ZNTDrawer() = default;
    ~ZNTDrawer() override;

    /// Sphere mesh, loaders, watermark, observers. Runs anew whenever the view shows new content.
    void setupDrawerWithType(ContentType type, const std::shared_ptr<ZNTDisplayView>& forView);
    /// Builds the mesh of a mode: the plane for mode 0, the sphere for any other.
    void setupVO(DisplayMode mode);
    /// The same with buffers and a redraw; nothing for the mode that is drawn already.
    void changeRenderingVO(DisplayMode mode);
    /// Rebuilds a plane whose screen has another shape by now.
    void screenShapeDidChange();
    /// Uploads the mesh. Earlier buffers stay until the mode or the screen's shape changes, or the
    /// teardown.
    void bindBuffers();
    /// Where the program build leaves the attribute that takes texture coordinates.
    [[nodiscard]] static std::uint32_t& textureCoordinatePointer();

    /// Uploads a frame of a video in place of the earlier one, and ends with the uniforms that the
    /// program of the last frame takes of it. Without a buffer the earlier frame stays.
    ///
    /// Errors: a log line, and no frame, when the drawer is not set up for video or has no context
    ///         any more; a log line for a plane that cannot be uploaded.
    void drawCVPixelBuffer(const platform::PixelBufferPtr& buffer, const UniformTable& uniforms);
    void setupCVPixelBuffer(const platform::PixelBufferPtr& buffer, const UniformTable& uniforms);
    /// Makes the cache that video content needs. The context is current.
    void prepareTextureCacheIfNeeded();
    /// Lets go of the frame's textures and the watermark's.
    void cleanUpTextures();

    /// Shows a picture once its texture has arrived; until then the earlier one, or nothing.
    void drawImage(const platform::ImagePtr& image);
    void setupTextureWithImage(const platform::ImagePtr& image);
    void setupWatermarkTexture();

    /// One frame: the content, then the watermark blended over it.
    void performBufferDrawingWithUniforms(const UniformTable& uniforms,
                                          const GLKMatrix4& modelProjectionMatrix,
                                          std::uint32_t withProgramm);

    /// Gives the view hot spots, in a drawer of their own.
    void attachPickingPoint(const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint,
                            const HotSpots& hotSpots);
    void updateHotSpots(const HotSpots& hotSpots);
    /// The list given last, also where some of it could not be shown.
    [[nodiscard]] const HotSpots& givenHotSpots() const { return givenHotSpots_; }
    /// Null before any were attached.
    [[nodiscard]] std::shared_ptr<ZNTHotSpotDrawer> hotSpotGLDrawer() const {
        return hotSpotGLDrawer_;
    }
    [[nodiscard]] std::shared_ptr<ZNTHotSpotPickingPoint> pickingPoint() const {
        return pickingPoint_;
    }
    /// Where automatic picking looks from the next list or switch on.
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
    /// `bindBuffers()` for another mesh, and the buffers of earlier ones are deleted.
    void replaceBuffers();
    void shareBuffers(const platform::MeshBuffers& buffers);
    void useOwnBuffers();
    void drawPhoto(const UniformTable& uniforms, const GLKMatrix4& matrix);
    void drawVideo(const UniformTable& uniforms, const GLKMatrix4& matrix);
    void loadWatermark(const Watermark& watermark);
    void setupVideoWatermark();
    [[nodiscard]] std::uint32_t watermarkTextureName();

    platform::ImagePtr srccgirf_; // kept while its texture is on the way
    std::shared_ptr<platform::TextureInfo> glTextureI_;
    std::shared_ptr<platform::TextureInfo> glTextureWatermark_;
    const QuadMask* watermarkCoverage_ = nullptr; // the program's, once its texture is there
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
