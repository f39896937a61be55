#include "Benchmarks/Soak/Scene.h"

#include "Benchmarks/Panoramas.h"
#include "Platform/Foundation/MainQueue.h"

#include <stdexcept>
#include <utility>

using namespace std::chrono_literals;
using platform::MainQueue;

namespace {

constexpr platform::Size kSize{320, 180};

std::unique_ptr<zanto::HeadlessHost> makeHost(zanto::HeadlessHostOptions::Time time) {
    auto host = zanto::HeadlessHost::create({.size = kSize, .time = time});
    if (!host)
        throw std::runtime_error(host.error().detail);
    return std::move(host).value();
}

bool isAtRest() {
    return MainQueue::main().outstandingWork() == 0 && !MainQueue::main().nextDeadline();
}

} // namespace

Scene::Scene(const Media& media, Events& events, Dice& dice, zanto::HeadlessHostOptions::Time time)
    : media_(media), events_(events), dice_(dice), host_(makeHost(time)),
      smallPicture_(std::make_shared<platform::Image>(makePanorama(64))), size_(kSize) {
    replacePlayer();
    appear();
}

Scene::~Scene() {
    embedded().setRootViewController(nullptr);
}

void Scene::replacePlayer() {
    embedded().setRootViewController(nullptr);
    player_ = platform::make<Visitor>(events_);
    embedded().setRootViewController(player_);
}

void Scene::resize(platform::Size size, double scale) {
    size_ = size;
    embedded().resize(size, scale);
}

void Scene::appear() {
    isVisible_ = true;
    embedded().appear();
}

void Scene::disappear() {
    isVisible_ = false;
    embedded().disappear();
}

void Scene::touch(platform::TouchPhase phase, std::int64_t finger, platform::Point fraction) {
    embedded().touch({.phase = phase,
                      .id = finger,
                      .location = {fraction.x * size_.width, fraction.y * size_.height},
                      .time = host_->now()});
}

void Scene::run(std::chrono::milliseconds duration) {
    host_->advanceTo(host_->now() + duration);
}

void Scene::settle() {
    const auto start = std::chrono::steady_clock::now();
    do {
        run(50ms);
        if (std::chrono::steady_clock::now() > start + 30s)
            throw std::runtime_error("the scene does not come to rest within 30 s");
    } while (!isAtRest());
    host_->settle();
}

GLCensus Scene::censusAtSmallPicture() {
    embedded().cancelTouches();
    embedded().setAttitudeAvailable(false);
    embedded().setOrientation(platform::InterfaceOrientation::LandscapeRight);
    resize(kSize, 1);
    replacePlayer();
    player_->prepareImage(smallPicture_);
    appear();
    settle();
    return takeGLCensus();
}

GLCensus Scene::censusWithoutPlayer() {
    embedded().setRootViewController(nullptr);
    player_.reset();
    settle();
    const GLCensus census = takeGLCensus();
    replacePlayer();
    return census;
}
