#include "Tests/Hosts/SDL/SDLScene.h"

#include "Hosts/Headless/SurfacelessContext.h"
#include "Platform/Foundation/MainQueue.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

using namespace std::chrono_literals;
using platform::Instant;

namespace {

/// Holds the driver in the process: SDL unloads it at its end, and what the driver keeps for good
/// would look like a leak from nowhere.
void keepDriver() {
    static const bool kept = zanto::SurfacelessContext::create().ok();
    (void)kept;
}

std::unique_ptr<zanto::SDLHost> makeSDLHost(const zanto::SDLHostOptions& options) {
    keepDriver();
    auto host = zanto::SDLHost::create(options);
    if (!host)
        throw std::runtime_error(host.error().detail);
    return std::move(host).value();
}

} // namespace

SDLScene::SDLScene(platform::Size size) : SDLScene({.title = "test", .size = size}) {}

SDLScene::SDLScene(const zanto::SDLHostOptions& options)
    : host_(makeSDLHost(options)), window_(SDL_GL_GetCurrentWindow()) {}

void SDLScene::show(const platform::ImagePtr& picture) {
    controller_ = platform::make<ZNTDisplayViewController>();
    controller_->prepareImage(picture);
    embedded().setRootViewController(controller_);
    embedded().appear();
    settle();
}

void SDLScene::releaseController() {
    embedded().setRootViewController(nullptr);
    controller_.reset();
}

void SDLScene::settle() {
    const auto isSettled = [this] {
        const int frames = host_->framesPresented();
        host_->turn(5ms);
        host_->turn(0ms); // acts on the event that may have ended the other's wait
        const zanto::EmbeddedHostStatus status = embedded().runDueWork();
        return host_->framesPresented() == frames && !status.drawNow && !status.nextDeadline &&
               platform::MainQueue::main().outstandingWork() == 0 &&
               SDL_HasEvents(SDL_FIRSTEVENT, SDL_LASTEVENT) == SDL_FALSE;
    };
    while (!isSettled()) {
    }
}

void SDLScene::act() {
    host_->turn(0ms);
    host_->turn(0ms);
}

int SDLScene::turnsWithin(Instant duration) {
    const Instant end = embedded().now() + duration;
    int turns = 0;
    for (; embedded().now() < end; ++turns)
        host_->turn(end - embedded().now());
    return turns;
}

platform::ImagePtr SDLScene::windowPicture() {
    int width = 0;
    int height = 0;
    SDL_GL_GetDrawableSize(window_, &width, &height);
    platform::PixelStorage upsideDown(width, height);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, upsideDown.bytes.get());
    platform::PixelStorage pixels(width, height);
    for (int y = 0; y < height; ++y)
        std::copy_n(upsideDown.row(height - 1 - y), pixels.rowBytes(), pixels.row(y));
    return std::make_shared<platform::Image>(std::move(pixels));
}

void SDLScene::push(SDL_WindowEventID kind) const {
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.windowID = windowId();
    event.window.event = static_cast<Uint8>(kind);
    SDL_PushEvent(&event);
}

void SDLScene::pushButton(Uint32 type, int x, int y, Uint8 button) const {
    SDL_Event event{};
    event.type = type;
    event.button.windowID = windowId();
    event.button.button = button;
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.button.x = x;
    event.button.y = y;
    SDL_PushEvent(&event);
}

void SDLScene::pushMotion(int x, int y) const {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.windowID = windowId();
    event.motion.x = x;
    event.motion.y = y;
    SDL_PushEvent(&event);
}

void SDLScene::pressKey(SDL_Keycode key, Uint16 modifiers) const {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.windowID = windowId();
    event.key.keysym.sym = key;
    event.key.keysym.mod = modifiers;
    SDL_PushEvent(&event);
}
