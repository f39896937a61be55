#include "Hosts/SDL/SDLHost.h"

#include "Hosts/SDL/SDLAttitude.h"
#include "Hosts/SDL/SDLInput.h"
#include "Hosts/SDL/SDLKeys.h"
#include "Hosts/SDL/SDLWakeUp.h"
#include "Hosts/SDL/SDLWindow.h"
#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/MainQueue.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace zanto {

using platform::Error;
using platform::ErrorCode;
using platform::Instant;
using platform::MainQueue;
using platform::Result;

namespace {

/// SDL waits in milliseconds, -1 for no limit. The time is rounded up, because iterations before
/// the deadline would find nothing to do.
int timeoutOf(std::optional<Instant> wait) {
    if (!wait)
        return -1;
    const auto whole = std::chrono::ceil<std::chrono::milliseconds>(*wait).count();
    return static_cast<int>(std::clamp<std::int64_t>(whole, 0, std::numeric_limits<int>::max()));
}

std::optional<Instant> shorterOf(std::optional<Instant> one, std::optional<Instant> other) {
    if (!one || !other)
        return one ? one : other;
    return std::min(*one, *other);
}

} // namespace

/// The loop and its state.
class SDLHost::Loop {
public:
    explicit Loop(std::unique_ptr<SDLWindow> window) : window_(std::move(window)) {
        isAlive = true;
    }
    ~Loop();
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;

    [[nodiscard]] std::optional<Error> embed(const SDLHostOptions& hostOptions);
    bool turn(std::optional<Instant> longest);
    void quit() { quitting_ = true; }
    [[nodiscard]] std::optional<Error> recreateContext();

    [[nodiscard]] EmbeddedHost& embedded() { return *embedded_; }
    [[nodiscard]] SDLWindow& window() { return *window_; }
    [[nodiscard]] int framesPresented() const { return framesPresented_; }
    [[nodiscard]] SDLInput& input() { return *input_; }
    void setKeyListener(KeyListener listener) { keyListener_ = std::move(listener); }
    void setSizeListener(SizeListener listener) { sizeListener_ = std::move(listener); }
    void setDropListener(DropListener listener) { dropListener_ = std::move(listener); }
    void setOverlay(Overlay overlay) { overlay_ = std::move(overlay); }
    void setNeedsFrame();
    void setEmulatesDevice(bool on);

    /// Whether an SDLHost exists. There can be one only, because SDL has one event queue and a host
    /// consumes all of its events.
    static inline bool isAlive = false;

private:
    [[nodiscard]] platform::GLBindings bindings() const;
    void reclaimContextOnEntry();
    void dispatchPending();
    void dispatch(const SDL_Event& event);
    void dispatchWindowEvent(const SDL_WindowEvent& event);
    void dispatchKey(const SDL_KeyboardEvent& event);
    void dispatchDrop(const SDL_DropEvent& event);
    void fitToWindow();
    std::optional<Instant> advance();
    void present();
    void wait(std::optional<Instant> deadline, std::optional<Instant> longest);

    std::unique_ptr<SDLWindow> window_;
    std::shared_ptr<SDLWakeUp> wakeUp_ = std::make_shared<SDLWakeUp>();
    std::unique_ptr<EmbeddedHost> embedded_; // destroyed before its context
    std::unique_ptr<SDLAttitude> attitude_;
    std::unique_ptr<SDLInput> input_;
    WindowMetrics metrics_;
    double framesPerSecond_ = 0;
    KeyListener keyListener_;
    SizeListener sizeListener_;
    DropListener dropListener_;
    Overlay overlay_;
    bool isShown_ = false;
    bool isExposed_ = false;    // the window has lost its content
    bool hasDropped_ = false;   // further things in the same drop are ignored
    bool isFrameAsked_ = false; // by the program, for the next frame time
    bool isFrameDue_ = false;   // that frame time has come
    bool quitting_ = false;
    bool hasContext_ = true;
    int framesPresented_ = 0;
};

SDLHost::Loop::~Loop() {
    isAlive = false;
    if (!embedded_)
        return;
    const auto environment = embedded_->environment();
    const platform::Environment::Scope scope(*environment);
    input_.reset();
    attitude_.reset();
    embedded_.reset();
}

platform::GLBindings SDLHost::Loop::bindings() const {
    return {[window = window_.get()] { window->makeCurrent(); }, SDLWindow::procAddress};
}

/// What is entered from another host's environment finds the other's context current.
void SDLHost::Loop::reclaimContextOnEntry() {
    embedded_->environment()->setEntry([window = window_.get()] { window->makeCurrentAgain(); });
}

std::optional<Error> SDLHost::Loop::embed(const SDLHostOptions& hostOptions) {
    metrics_ = window_->metrics();
    EmbeddedHostOptions options;
    options.gl = bindings();
    options.size = metrics_.points;
    options.scale = metrics_.scale();
    options.framesPerSecond = framesPerSecond_ = window_->framesPerSecond();
    options.touchSlop = hostOptions.touchSlop;
    options.wakeUp = [wakeUp = wakeUp_] { wakeUp->ring(); };
    auto embedded = EmbeddedHost::create(std::move(options));
    if (!embedded)
        return embedded.error();
    embedded_ = std::move(embedded).value();
    reclaimContextOnEntry();
    const platform::Environment::Scope scope(*embedded_->environment());
    attitude_ = std::make_unique<SDLAttitude>();
    input_ = std::make_unique<SDLInput>(*embedded_, window_->id());
    input_->setWindowSize(metrics_.points);
    return std::nullopt;
}

void SDLHost::Loop::setEmulatesDevice(bool on) {
    const platform::Environment::Scope scope(*embedded_->environment());
    attitude_->setMuted(on);
    input_->setEmulatesDevice(on);
}

bool SDLHost::Loop::turn(std::optional<Instant> longest) {
    const platform::Environment::Scope scope(*embedded_->environment());
    if (!std::exchange(isShown_, true))
        window_->show();
    dispatchPending();
    if (quitting_)
        return false;
    const auto deadline = advance();
    if (!quitting_)
        wait(deadline, longest);
    return !quitting_;
}

void SDLHost::Loop::dispatchPending() {
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0)
        dispatch(event);
    input_->endPump();
}

/// Handles every event from SDL.
void SDLHost::Loop::dispatch(const SDL_Event& event) {
    if (wakeUp_->take(event))
        return;
    attitude_->take(event);
    // Gesture handlers may request drawing, which needs a context.
    if (hasContext_)
        input_->dispatch(event);
    switch (event.type) {
    case SDL_QUIT:
        return quit();
    case SDL_WINDOWEVENT:
        return dispatchWindowEvent(event.window);
    case SDL_KEYDOWN:
        return dispatchKey(event.key);
    case SDL_DROPBEGIN:
    case SDL_DROPFILE:
    case SDL_DROPTEXT:
    case SDL_DROPCOMPLETE:
        return dispatchDrop(event.drop);
    default:
        return;
    }
}

void SDLHost::Loop::dispatchWindowEvent(const SDL_WindowEvent& event) {
    if (event.windowID != window_->id())
        return;
    switch (event.event) {
    case SDL_WINDOWEVENT_CLOSE:
        return quit();
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_SHOWN:
    case SDL_WINDOWEVENT_RESTORED:
        isExposed_ = true;
        break;
    default:
        break;
    }
    // A change of size or display is reported by different events on different systems.
    fitToWindow();
}

void SDLHost::Loop::fitToWindow() {
    if (const double rate = window_->framesPerSecond(); rate != framesPerSecond_)
        embedded_->setFramesPerSecond(framesPerSecond_ = rate);
    const WindowMetrics metrics = window_->metrics();
    if (metrics == metrics_)
        return;
    metrics_ = metrics;
    embedded_->resize(metrics.points, metrics.scale());
    input_->setWindowSize(metrics.points);
    const SizeListener listener = sizeListener_;
    if (listener)
        listener(metrics.points, metrics.scale());
}

void SDLHost::Loop::dispatchKey(const SDL_KeyboardEvent& event) {
    const auto press = event.windowID == window_->id() ? keyEventOf(event) : std::nullopt;
    // A copy, because the listener may set a new one.
    const KeyListener listener = keyListener_;
    if (press && listener)
        listener(*press);
}

void SDLHost::Loop::dispatchDrop(const SDL_DropEvent& event) {
    const std::unique_ptr<char, decltype(&SDL_free)> dropped(event.file, SDL_free);
    // Some systems do not report the window.
    if (event.windowID != 0 && event.windowID != window_->id())
        return;
    if (!dropped) {
        hasDropped_ = false; // the drop begins or ends
        return;
    }
    const DropListener listener = dropListener_;
    if (!std::exchange(hasDropped_, true) && listener)
        listener(dropped.get());
}

void SDLHost::Loop::setNeedsFrame() {
    if (std::exchange(isFrameAsked_, true))
        return;
    // The queue is cleared before this object is destroyed.
    embedded_->environment()->queue().asyncAfter(Instant(0), [this] {
        isFrameAsked_ = false;
        isFrameDue_ = true;
    });
}

/// Runs what is due and draws a frame if needed. Returns when the next iteration is due.
std::optional<Instant> SDLHost::Loop::advance() {
    if (!hasContext_)
        return std::nullopt;
    window_->makeCurrent();
    const EmbeddedHostStatus status = embedded_->runDueWork();
    // A frame of an invisible window is drawn once it is visible; its deadline does not matter
    // until then.
    if (!window_->isVisible())
        return MainQueue::main().nextDeadline();
    if (!status.drawNow && !isExposed_ && !isFrameDue_)
        return status.nextDeadline;
    present();
    const auto deadline = embedded_->runDueWork().nextDeadline;
    // The frame time that the program waits for may have come during the drawing.
    return isFrameDue_ ? embedded_->now() : deadline;
}

void SDLHost::Loop::present() {
    isFrameDue_ = false;
    if (std::exchange(isExposed_, false) || embedded_->isTransparent()) {
        // Old memory content may show where no view covers the window.
        glBindFramebuffer(GL_FRAMEBUFFER, window_->framebuffer());
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT);
    }
    embedded_->draw(window_->framebuffer(), {0, 0, metrics_.pixels.width, metrics_.pixels.height});
    // A copy, because the overlay may set a new one.
    if (const Overlay overlay = overlay_) {
        glViewport(0, 0, metrics_.pixels.width, metrics_.pixels.height);
        overlay(metrics_.points, metrics_.scale());
    }
    window_->swap();
    ++framesPresented_;
}

void SDLHost::Loop::wait(std::optional<Instant> deadline, std::optional<Instant> longest) {
    if (deadline)
        deadline = *deadline - embedded_->now();
    SDL_Event event;
    if (SDL_WaitEventTimeout(&event, timeoutOf(shorterOf(deadline, longest))) != 0)
        dispatch(event);
}

std::optional<Error> SDLHost::Loop::recreateContext() {
    const platform::Environment::Scope scope(*embedded_->environment());
    hasContext_ = false;
    if (auto error = window_->replaceContext())
        return error;
    if (!embedded_->contextWasReplaced(bindings()))
        return Error{ErrorCode::Unavailable,
                     "SDL: the new context is not OpenGL ES 2.0 with OES_vertex_array_object"};
    reclaimContextOnEntry();
    hasContext_ = true;
    isExposed_ = true;
    // Touches that ended meanwhile were not reported.
    input_->cancelTouches();
    return std::nullopt;
}

Result<std::unique_ptr<SDLHost>> SDLHost::create(const SDLHostOptions& options) {
    if (Loop::isAlive)
        return Error{ErrorCode::Unavailable, "another host of this kind is alive in this process"};
    auto window = SDLWindow::create(options);
    if (!window)
        return window.error();
    auto loop = std::make_unique<Loop>(std::move(window).value());
    if (const auto error = loop->embed(options))
        return *error;
    return std::unique_ptr<SDLHost>(new SDLHost(std::move(loop)));
}

SDLHost::SDLHost(std::unique_ptr<Loop> loop) : loop_(std::move(loop)) {}

SDLHost::~SDLHost() = default;

EmbeddedHost& SDLHost::embedded() {
    return loop_->embedded();
}

void SDLHost::run() {
    while (turn(std::nullopt)) {
    }
}

bool SDLHost::turn(std::optional<Instant> longest) {
    return loop_->turn(longest);
}

void SDLHost::quit() {
    loop_->quit();
}

void SDLHost::setKeyListener(KeyListener listener) {
    loop_->setKeyListener(std::move(listener));
}

void SDLHost::setTouchListener(TouchListener listener) {
    loop_->input().setTouchListener(std::move(listener));
}

void SDLHost::touch(const platform::TouchEvent& event) {
    loop_->input().deliver(event);
}

void SDLHost::setSizeListener(SizeListener listener) {
    loop_->setSizeListener(std::move(listener));
}

void SDLHost::setOverlay(Overlay overlay) {
    loop_->setOverlay(std::move(overlay));
}

void SDLHost::setNeedsFrame() {
    loop_->setNeedsFrame();
}

void SDLHost::setTouchFilter(TouchFilter filter) {
    loop_->input().setTouchFilter(std::move(filter));
}

void SDLHost::setPointerListener(PointerListener listener) {
    loop_->input().setPointerListener(std::move(listener));
}

void SDLHost::setDropListener(DropListener listener) {
    loop_->setDropListener(std::move(listener));
}

void SDLHost::setPointerShown(bool shown) {
    SDL_ShowCursor(shown ? SDL_ENABLE : SDL_DISABLE);
}

void SDLHost::setEmulatesDevice(bool on) {
    loop_->setEmulatesDevice(on);
}

bool SDLHost::emulatesDevice() const {
    return loop_->input().emulatedDevice().isOn();
}

void SDLHost::setTitle(const std::string& title) {
    loop_->window().setTitle(title);
}

bool SDLHost::isFullScreen() const {
    return loop_->window().isFullScreen();
}

void SDLHost::setFullScreen(bool fullScreen) {
    loop_->window().setFullScreen(fullScreen);
}

std::optional<Error> SDLHost::recreateContext() {
    return loop_->recreateContext();
}

int SDLHost::framesPresented() const {
    return loop_->framesPresented();
}

} // namespace zanto
