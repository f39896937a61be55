#include "Benchmarks/VideoFrameBenchmark.h"

#include "Benchmarks/BareVideoQuad.h"
#include "Benchmarks/Timing.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Platform/Graphics/TextureCache.h"

#include <GLES2/gl2.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

constexpr platform::SizePx kVideo{3840, 1920};
constexpr platform::SizePx kView{1280, 720};
constexpr float kDegree = 3.14159265F / 180;
constexpr int kFrames = 31;

struct View {
    const char* name;
    float yawDegrees;
    float pitchDegrees;
};

// The watermark is visible in the last two.
constexpr std::array<View, 4> kViews{{{"ahead, 30 up", 0, 30},
                                      {"west, 60 up", -90, 60},
                                      {"ahead, level", 0, 0},
                                      {"west, 40 down", -90, -40}}};

/// Frames as from a decoder: different memory for each, reused in a cycle.
class Frames {
public:
    Frames() {
        for (auto& memory : memory_) {
            memory = std::make_shared<std::vector<std::uint8_t>>(kLumaBytes * 3 / 2);
            std::uint32_t noise = 1;
            for (std::uint8_t& byte : *memory) {
                noise = noise * 1664525 + 1013904223;
                byte = static_cast<std::uint8_t>(16 + (noise >> 24U) % 220);
            }
        }
    }
    [[nodiscard]] platform::PixelBufferPtr next() {
        const auto& memory = memory_[count_++ % memory_.size()];
        return platform::PixelBuffer::wrap(kVideo, {memory->data(), kVideo.width},
                                           {memory->data() + kLumaBytes, kVideo.width}, memory);
    }

private:
    static constexpr std::size_t kLumaBytes = std::size_t{kVideo.width} * kVideo.height;
    std::array<std::shared_ptr<std::vector<std::uint8_t>>, 4> memory_;
    std::size_t count_ = 0;
};

/// A player on a virtual clock that shows frames, and the framebuffer that it is drawn into.
class Scene {
public:
    Scene() : host_(makeHost()), player_(platform::make<ZNTDisplayViewController>()) {
        host_->embedded().setRootViewController(player_);
        host_->embedded().appear();
        give();
        host_->settle(); // including the watermark
        target_ = std::move(platform::OffscreenTarget::create(kView)).value();
    }

    void aim(const View& view, int frame) {
        const float yaw = (view.yawDegrees + 0.25F * static_cast<float>(frame)) * kDegree;
        ZNTInterractor& camera = *player_->displayView()->interractor();
        camera.setViewMatrix(GLKMatrix4MakeRotation(-view.pitchDegrees * kDegree, 1, 0, 0));
        camera.setRotationMatrix(GLKMatrix4MakeRotation(yaw, 0, 0, 1));
    }
    void give() {
        auto frame = frames_.next();
        player_->displayView()->displayCVPixelBuffer(frame);
        shown_ = std::move(frame); // the controller keeps the last frame in the same way
    }
    void draw() {
        host_->embedded().draw(target_->framebuffer(), {0, 0, kView.width, kView.height});
    }
    void uploadBare() { quad_.upload(*frames_.next()); }
    void drawQuad() {
        glBindFramebuffer(GL_FRAMEBUFFER, target_->framebuffer());
        glViewport(0, 0, kView.width, kView.height);
        glDisable(GL_SCISSOR_TEST);
        // Roughly what a level view shows: 100 degrees horizontally, 70 vertically.
        quad_.draw({0.36F, 0.3F, 0.64F, 0.7F});
    }

private:
    static std::unique_ptr<zanto::HeadlessHost> makeHost() {
        auto host = zanto::HeadlessHost::create({{kView.width, kView.height}});
        if (!host)
            throw std::runtime_error(host.error().detail);
        return std::move(host).value();
    }

    std::unique_ptr<zanto::HeadlessHost> host_;
    std::shared_ptr<ZNTDisplayViewController> player_;
    std::unique_ptr<platform::OffscreenTarget> target_;
    BareVideoQuad quad_{kVideo};
    Frames frames_;
    platform::PixelBufferPtr shown_;
};

nlohmann::ordered_json measureView(Scene& scene, const View& view) {
    std::vector<double> frames;
    std::vector<double> draws;
    std::vector<double> bares;
    std::vector<double> quads;
    // The variants alternate, so that other load on the machine affects all of them.
    for (int i = -3; i < kFrames; ++i) {
        scene.aim(view, i);
        const double frame = millisecondsOf([&] {
            scene.give();
            scene.draw();
        });
        const double draw = millisecondsOf([&] { scene.draw(); });
        const double bare = millisecondsOf([&] {
            scene.uploadBare();
            scene.drawQuad();
        });
        const double quad = millisecondsOf([&] { scene.drawQuad(); });
        if (i < 0)
            continue; // warm-up
        frames.push_back(frame);
        draws.push_back(draw);
        bares.push_back(bare);
        quads.push_back(quad);
    }
    return {{"view", view.name},
            {"frame_ms", median(frames)},
            {"draw_ms", median(draws)},
            {"bare_upload_and_quad_ms", median(bares)},
            {"quad_ms", median(quads)},
            {"ratio", median(frames) / median(bares)},
            {"draw_ratio", median(draws) / median(quads)}};
}

} // namespace

nlohmann::ordered_json measureVideoFrames() {
    Scene scene;
    nlohmann::ordered_json views = nlohmann::ordered_json::array();
    std::vector<double> ratios;
    const std::uint64_t before = platform::TextureCache::uploadedPlanes();
    for (const View& view : kViews) {
        views.push_back(measureView(scene, view));
        ratios.push_back(views.back()["ratio"].get<double>());
    }
    const auto uploads = static_cast<double>(platform::TextureCache::uploadedPlanes() - before);
    return {
        {"size", "1280x720"},
        {"video", "3840x1920"},
        {"median_ratio", median(ratios)},
        {"planes_uploaded_a_frame", uploads / static_cast<double>(kViews.size() * (kFrames + 3))},
        {"views", views}};
}
