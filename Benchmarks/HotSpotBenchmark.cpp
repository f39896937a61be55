#include "Benchmarks/HotSpotBenchmark.h"

#include "Benchmarks/BareProgram.h"
#include "Benchmarks/Panoramas.h"
#include "Benchmarks/Timing.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "HVViewer/Model/ZNTHotSpotPlaneVO.h"
#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/OffscreenTarget.h"

#include <GLES2/gl2.h>

#include <cmath>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

constexpr platform::SizePx kSize{1920, 1080};
constexpr int kSpots = 200;
constexpr int kRounds = 31;

/// Spread evenly over the sphere, along a spiral from pole to pole.
std::vector<std::shared_ptr<ZNTHotSpot>> spreadSpots() {
    const auto icon = std::make_shared<platform::Image>(makePanorama(128));
    const double turn = 3.14159265358979 * (3 - std::sqrt(5.0));
    std::vector<std::shared_ptr<ZNTHotSpot>> spots;
    for (int i = 0; i < kSpots; ++i) {
        const double height = 1 - 2 * (i + 0.5) / kSpots;
        spots.push_back(ZNTHotSpot::hotSpotWithTextureImage(
            icon, static_cast<float>(-std::asin(height)),
            static_cast<float>(std::remainder(i * turn, 2 * 3.14159265358979))));
        spots.back()->setScale(0.5F);
    }
    return spots;
}

/// Draws the markers' quads with a minimal program: one matrix and one draw call each.
class BareQuads {
public:
    BareQuads()
        : program_("attribute vec3 a_position;"
                   "attribute vec2 a_place;"
                   "uniform mat4 u_matrix;"
                   "varying highp vec2 v_place;"
                   "void main() {"
                   "  v_place = vec2(a_place.x, 1.0 - a_place.y);"
                   "  gl_Position = u_matrix * vec4(a_position, 1.0);"
                   "}",
                   "a_position", "a_place"),
          matrix_(program_.uniform("u_matrix")),
          mesh_(platform::uploadMesh(quad_.model(), 1, GL_STATIC_DRAW)) {}
    ~BareQuads() { platform::deleteMesh(mesh_); }
    BareQuads(const BareQuads&) = delete;
    BareQuads& operator=(const BareQuads&) = delete;

    void draw(const std::vector<std::shared_ptr<ZNTHotSpot>>& spots) const {
        platform::GLDevice::main().bindVertexArray(mesh_.vertexArray);
        program_.use(spots.front()->textureName());
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        for (const auto& spot : spots) {
            const GLKMatrix4 matrix = spot->hotSpotModelViewProjectionMatrix();
            glUniformMatrix4fv(matrix_, 1, GL_FALSE, matrix.m);
            glDrawArrays(GL_TRIANGLES, 0, 6);
        }
        glDisable(GL_BLEND);
        platform::GLDevice::main().bindVertexArray(0);
    }

private:
    BareProgram program_;
    std::int32_t matrix_;
    ZNTHotSpotPlaneVO quad_;
    platform::MeshBuffers mesh_;
};

/// A player with the hot spots.
class Scene {
public:
    Scene() : host_(makeHost()), player_(platform::make<ZNTDisplayViewController>()) {
        player_->prepareImage(std::make_shared<platform::Image>(makePanorama(4096)));
        const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
        player_->addHotSpots(spots_, point);
        host_->embedded().setRootViewController(player_);
        host_->embedded().appear();
        host_->settle();
        target_ = std::move(platform::OffscreenTarget::create(kSize)).value();
    }

    void drawFrame() {
        host_->embedded().draw(target_->framebuffer(), {0, 0, kSize.width, kSize.height});
    }
    void drawMarkers() {
        bindTarget();
        drawer().performDrawMarkersWithProjection(
            player_->displayView()->modelViewProjectionMatrix());
    }
    void drawBareQuads() {
        bindTarget();
        quads_.draw(spots_);
    }
    void tap() { player_->displayView()->objectPickTestForPixelAtX(960, 540); }
    void look() { drawer().objecPickTestForPickingPoint(); }

private:
    static std::unique_ptr<zanto::HeadlessHost> makeHost() {
        zanto::HeadlessHostOptions options;
        options.size = {kSize.width, kSize.height};
        auto host = zanto::HeadlessHost::create(options);
        if (!host)
            throw std::runtime_error(host.error().detail);
        return std::move(host).value();
    }
    [[nodiscard]] ZNTHotSpotDrawer& drawer() const {
        return *player_->displayView()->glDrawer()->hotSpotGLDrawer();
    }
    void bindTarget() const {
        glBindFramebuffer(GL_FRAMEBUFFER, target_->framebuffer());
        glViewport(0, 0, kSize.width, kSize.height);
        glDisable(GL_SCISSOR_TEST);
    }

    std::unique_ptr<zanto::HeadlessHost> host_;
    std::vector<std::shared_ptr<ZNTHotSpot>> spots_ = spreadSpots();
    std::shared_ptr<ZNTDisplayViewController> player_;
    std::unique_ptr<platform::OffscreenTarget> target_;
    BareQuads quads_;
};

} // namespace

nlohmann::ordered_json measureHotSpots() {
    Scene scene;
    std::vector<double> frames;
    std::vector<double> taps;
    std::vector<double> looks;
    std::vector<double> markers;
    std::vector<double> quads;
    for (int i = -3; i < kRounds; ++i) {
        const double frame = millisecondsOf([&] { scene.drawFrame(); });
        const double tap = millisecondsOf([&] { scene.tap(); });
        const double look = millisecondsOf([&] { scene.look(); });
        const double marker = millisecondsOf([&] { scene.drawMarkers(); });
        const double quad = millisecondsOf([&] { scene.drawBareQuads(); });
        if (i < 0)
            continue; // warm-up
        frames.push_back(frame);
        taps.push_back(tap);
        looks.push_back(look);
        markers.push_back(marker);
        quads.push_back(quad);
    }
    return {{"size", "1920x1080"},
            {"hot_spots", kSpots},
            {"frame_ms", median(frames)},
            {"tap_ms", median(taps)},
            {"tap_frames", median(taps) / median(frames)},
            {"look_ms", median(looks)},
            {"look_frames", median(looks) / median(frames)},
            {"markers_ms", median(markers)},
            {"bare_quads_ms", median(quads)},
            {"markers_ratio", median(markers) / median(quads)}};
}
