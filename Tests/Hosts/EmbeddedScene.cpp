#include "Tests/Hosts/EmbeddedScene.h"

#include <utility>

platform::GLBindings bindingsOf(const zanto::SurfacelessContext& context) {
    return {[&context] { context.makeCurrent(); }, zanto::SurfacelessContext::procAddress};
}

platform::Instant frame(int index) {
    return platform::fromSeconds(index / 60.0);
}

EmbeddedScene::EmbeddedScene(double framesPerSecond) {
    auto context = zanto::SurfacelessContext::create();
    context_ = std::move(context).value();
    zanto::EmbeddedHostOptions options;
    options.gl = bindingsOf(*context_);
    options.size = {16, 12};
    options.clock = clock_;
    options.framesPerSecond = framesPerSecond;
    options.wakeUp = [this] { ++wakeUps_; };
    auto host = zanto::EmbeddedHost::create(std::move(options));
    host_ = std::move(host).value();
    auto target = platform::OffscreenTarget::create({16, 12});
    target_ = std::move(target).value();
    controller_ = platform::make<RecordingController>();
    painted_ = std::make_unique<PaintedView>(platform::Rect{{2, 3}, {4, 5}}, kRedColor);
    host_->setRootViewController(controller_);
    controller_->view()->addSubview(painted_->view);
}

EmbeddedScene::~EmbeddedScene() {
    host_.reset();
    // How the screen was held last stays with the process.
    auto& application = platform::Application::sharedApplication();
    application.setOrientation(platform::InterfaceOrientation::LandscapeRight);
    application.setOrientation(platform::InterfaceOrientation::Portrait);
}

bool EmbeddedScene::turn() {
    if (!host_->runDueWork().drawNow)
        return false;
    draw();
    return true;
}

void EmbeddedScene::draw() {
    host_->draw(target_->framebuffer(), {0, 0, 16, 12});
}

void EmbeddedScene::endHost() {
    host_.reset();
}
