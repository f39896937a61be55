#include "Benchmarks/FrameBenchmark.h"

#include "Benchmarks/BareMesh.h"
#include "Benchmarks/BareQuad.h"
#include "Benchmarks/Panoramas.h"
#include "Benchmarks/Timing.h"
#include "HVViewer/DisplayController/DisplayView/MeshPasses.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/VisibleQuads.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/OffscreenTarget.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr float kDegree = 3.14159265F / 180;
constexpr int kFrames = 31;
constexpr int kMiddleFrame = kFrames / 2;

struct View {
    const char* name;
    float yawDegrees;
    float pitchDegrees;
    bool watermarkInSight;
};

// The watermark is a band about 18 degrees below the horizon. The last column says whether it is
// visible.
constexpr std::array<View, 8> kViews{{{"ahead, 30 up", 0, 30, false},
                                      {"east, 35 up", 90, 35, false},
                                      {"behind, 45 up", 180, 45, false},
                                      {"west, 60 up", -90, 60, false},
                                      {"the zenith", 20, 90, false},
                                      {"ahead, level", 0, 0, true},
                                      {"north-east, 25 down", 45, -25, true},
                                      {"west, 40 down", -90, -40, true}}};

/// A player on a virtual clock, and the framebuffer that it is drawn into.
class Scene {
public:
    explicit Scene(platform::SizePx size)
        : size_(size), host_(makeHost(size)), player_(platform::make<ZNTDisplayViewController>()) {
        player_->prepareImage(std::make_shared<platform::Image>(makePanorama(8192)));
        host_->embedded().setRootViewController(player_);
        host_->embedded().appear();
        host_->settle();
        target_ = std::move(platform::OffscreenTarget::create(size)).value();
    }

    void aim(const View& view, int frame) {
        // The camera rotates by a quarter of a degree per frame, as under a slow finger.
        const float yaw =
            (view.yawDegrees + 0.25F * static_cast<float>(frame - kMiddleFrame)) * kDegree;
        ZNTInterractor& camera = *player_->displayView()->interractor();
        camera.setViewMatrix(GLKMatrix4MakeRotation(-view.pitchDegrees * kDegree, 1, 0, 0));
        camera.setRotationMatrix(GLKMatrix4MakeRotation(yaw, 0, 0, 1));
    }
    void drawFrame() {
        host_->embedded().draw(target_->framebuffer(), {0, 0, size_.width, size_.height});
    }
    void drawQuad(const std::array<float, 4>& part) {
        bindTarget();
        quad_.draw(texture(), part);
    }
    /// Draws only the content's runs.
    void drawMesh(const std::vector<VertexRun>& runs) {
        bindTarget();
        mesh_.draw(texture(), player_->displayView()->camera().modelViewProjection, runs);
    }
    /// The part of the image that the view shows: left, top, right, bottom.
    [[nodiscard]] std::array<float, 4> visiblePart() const {
        const QuadMask visible = visibleQuads(player_->displayView()->camera().modelViewProjection);
        int bottom = QuadMask::kRings;
        int top = -1;
        RingMask across;
        for (int ring = 0; ring < QuadMask::kRings; ++ring) {
            if (visible.ring(ring).isEmpty())
                continue;
            bottom = std::min(bottom, ring);
            top = ring;
            for (int segment = 0; segment < RingMask::kSegments; ++segment) {
                if (visible.ring(ring).test(segment))
                    across.set(segment);
            }
        }
        // Columns may wrap around at the back, so the same number is taken from the middle, without
        // a seam.
        int columns = 0;
        for (int segment = 0; segment < RingMask::kSegments; ++segment)
            columns += across.test(segment) ? 1 : 0;
        const float half = static_cast<float>(columns) / RingMask::kSegments / 2;
        return {0.5F - half, 1 - static_cast<float>(top + 1) / QuadMask::kRings, 0.5F + half,
                1 - static_cast<float>(bottom) / QuadMask::kRings};
    }
    [[nodiscard]] MeshPasses passes() const {
        const auto view = player_->displayView();
        return planPasses(view->glDrawer()->voProvider()->model(),
                          view->camera().modelViewProjection, &builtInWatermark()->coverage);
    }

private:
    static std::unique_ptr<zanto::HeadlessHost> makeHost(platform::SizePx size) {
        auto host = zanto::HeadlessHost::create(
            {{static_cast<double>(size.width), static_cast<double>(size.height)}});
        if (!host)
            throw std::runtime_error(host.error().detail);
        return std::move(host).value();
    }

    void bindTarget() const {
        glBindFramebuffer(GL_FRAMEBUFFER, target_->framebuffer());
        glViewport(0, 0, size_.width, size_.height);
        glDisable(GL_SCISSOR_TEST);
    }
    [[nodiscard]] std::uint32_t texture() const {
        return player_->displayView()->glDrawer()->glTextureI()->name();
    }

    platform::SizePx size_;
    std::unique_ptr<zanto::HeadlessHost> host_;
    std::shared_ptr<ZNTDisplayViewController> player_;
    std::unique_ptr<platform::OffscreenTarget> target_;
    BareQuad quad_;
    BareMesh mesh_;
};

nlohmann::ordered_json measureView(Scene& scene, const View& view) {
    std::vector<double> frames;
    std::vector<double> wholes;
    std::vector<double> quads;
    std::vector<double> meshes;
    scene.aim(view, 0);
    scene.drawFrame();
    const std::array<float, 4> part = scene.visiblePart();
    // The variants alternate, so that other load on the machine affects all of them.
    for (int i = -3; i < kFrames; ++i) {
        scene.aim(view, i);
        platform::GLDevice::main().setQuirks({});
        const double frame = millisecondsOf([&] { scene.drawFrame(); });
        const double quad = millisecondsOf([&] { scene.drawQuad(part); });
        const MeshPasses passes = scene.passes();
        const double mesh = millisecondsOf([&] { scene.drawMesh(passes.content); });
        platform::GLDevice::main().setQuirks({.drawsWholeMeshes = true});
        const double whole = millisecondsOf([&] { scene.drawFrame(); });
        if (i < 0)
            continue; // warm-up
        frames.push_back(frame);
        quads.push_back(quad);
        meshes.push_back(mesh);
        wholes.push_back(whole);
    }
    platform::GLDevice::main().setQuirks({});
    const MeshPasses passes = scene.passes();
    const double floor = median(quads);
    return {{"view", view.name},
            {"watermark", view.watermarkInSight},
            {"frame_ms", median(frames)},
            {"quad_ms", floor},
            {"ratio", median(frames) / floor},
            {"over_bare_mesh", median(frames) / median(meshes)},
            {"worst_frame_ms", *std::max_element(frames.begin(), frames.end())},
            {"whole_strip_ratio", median(wholes) / floor},
            {"draw_calls", passes.content.size() + passes.watermark.size()},
            {"watermark_draw_calls", passes.watermark.size()}};
}

} // namespace

nlohmann::ordered_json measureFrames(platform::SizePx size) {
    Scene scene(size);
    nlohmann::ordered_json views = nlohmann::ordered_json::array();
    std::vector<double> ratios;
    std::vector<double> overMesh;
    for (const View& view : kViews) {
        views.push_back(measureView(scene, view));
        ratios.push_back(views.back()["ratio"].get<double>());
        overMesh.push_back(views.back()["over_bare_mesh"].get<double>());
    }
    return {{"size", std::to_string(size.width) + "x" + std::to_string(size.height)},
            {"median_ratio", median(ratios)},
            {"worst_ratio", *std::max_element(ratios.begin(), ratios.end())},
            {"median_over_bare_mesh", median(overMesh)},
            {"worst_over_bare_mesh", *std::max_element(overMesh.begin(), overMesh.end())},
            {"views", views}};
}
