#include "Hosts/Embedded/EmbeddedHost.h"

#include "Hosts/Embedded/WakeUpSignal.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Interface/ViewController.h"
#include "Platform/Interface/Window.h"
#include "Platform/Media/Player.h"

#include <GLES2/gl2.h>

#include <utility>

namespace zanto {

using platform::Application;
using platform::GLDevice;
using platform::Instant;
using platform::MainQueue;

namespace {

/// Unbinds every object of the library that GL calls of the application could modify or draw with,
/// and sets the state that docs/embedding.md specifies.
void leaveGLState() {
    if (!GLDevice::main().isInstalled())
        return;
    GLDevice::main().makeCurrent();
    GLDevice::main().bindVertexArray(0);
    glUseProgram(0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, 0);
    glDisable(GL_BLEND);
    glDisable(GL_SCISSOR_TEST);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glDepthMask(GL_FALSE);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
}

/// Keeps a lower limit that the application has set.
void lowerDecodeLimit(int maxSidePx) {
    auto limits = platform::Image::decodeLimits();
    if (limits.maxSidePx == 0 || limits.maxSidePx > maxSidePx)
        limits.maxSidePx = maxSidePx;
    platform::Image::setDecodeLimits(limits);
}

} // namespace

/// The scope of a call: makes the host's environment current, and restores the documented GL state
/// at the end.
class EmbeddedHost::Call {
public:
    explicit Call(const EmbeddedHost& host) : scope_(*host.environment_) {}
    ~Call() { leaveGLState(); }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

private:
    platform::Environment::Scope scope_;
};

platform::Result<std::unique_ptr<EmbeddedHost>> EmbeddedHost::create(EmbeddedHostOptions options) {
    using platform::Error;
    using platform::ErrorCode;
    auto environment = platform::Environment::claim();
    const platform::Environment::Scope scope(*environment);
    environment->setLogSink(options.log);
    if (!GLDevice::main().install(options.gl)) {
        environment->release();
        return Error{ErrorCode::Unavailable,
                     "the context is not OpenGL ES 2.0 with OES_vertex_array_object"};
    }
    return std::unique_ptr<EmbeddedHost>(
        new EmbeddedHost(std::move(options), std::move(environment)));
}

EmbeddedHost::EmbeddedHost(EmbeddedHostOptions options,
                           std::shared_ptr<platform::Environment> environment)
    : environment_(std::move(environment)),
      clock_(options.clock ? std::move(options.clock) : std::make_shared<platform::SystemClock>()),
      grid_(options.framesPerSecond), signal_(std::make_shared<WakeUpSignal>()),
      window_(platform::make<platform::Window>()) {
    MainQueue& queue = MainQueue::main();
    queue.setClock(clock_);
    queue.setFrameGrid(grid_);
    queue.setWakeUp([signal = signal_, application = std::move(options.wakeUp)] {
        signal->ring();
        if (application)
            application();
    });
    lowerDecodeLimit(GLDevice::main().maxTextureSidePx());
    platform::AttitudeSource::shared().reset();
    window_->setTouchSlop(options.touchSlop);
    Application::sharedApplication().startAnew();
    Application::sharedApplication().setKeyWindow(window_);
    resize(options.size, options.scale);
}

EmbeddedHost::~EmbeddedHost() {
    const platform::Environment::Scope scope(*environment_);
    GLDevice::main().makeCurrent();
    setRootViewController(nullptr);
    window_.reset();
    MainQueue::main().reset();
    GLDevice::main().uninstall();
    environment_->release();
}

void EmbeddedHost::perform(const std::function<void()>& block) {
    const Call call(*this);
    GLDevice::main().makeCurrent();
    block();
}

void EmbeddedHost::setRootViewController(
    const std::shared_ptr<platform::ViewController>& controller) {
    const Call call(*this);
    if (controller && controller->environment() != environment_) {
        platform::log(platform::LogLevel::Error,
                      "host: the view controller belongs to another host; it is not shown");
        return;
    }
    window_->setRootViewController(controller);
}

void EmbeddedHost::appear() {
    const Call call(*this);
    window_->makeKeyAndVisible();
}

void EmbeddedHost::disappear() {
    const Call call(*this);
    window_->resignVisible();
}

void EmbeddedHost::resize(platform::Size size, double scale) {
    const Call call(*this);
    const bool isRescaled = scale != platform::Screen::mainScreen().scale();
    Application::sharedApplication().setContentSize(size, scale);
    if (isRescaled) // the frames of views may be unchanged
        window_->setNeedsDisplay();
}

void EmbeddedHost::setOrientation(platform::InterfaceOrientation orientation) {
    const Call call(*this);
    Application::sharedApplication().setOrientation(orientation);
}

void EmbeddedHost::touch(const platform::TouchEvent& event) {
    const Call call(*this);
    GLDevice::main().makeCurrent();
    window_->touch(event);
}

void EmbeddedHost::cancelTouches() {
    const Call call(*this);
    GLDevice::main().makeCurrent();
    window_->cancelTouches();
}

void EmbeddedHost::setAttitude(const platform::Attitude& attitude) {
    const platform::Environment::Scope scope(*environment_);
    platform::AttitudeSource::shared().publish(attitude);
}

void EmbeddedHost::setAttitudeAvailable(bool available) {
    const platform::Environment::Scope scope(*environment_);
    platform::AttitudeSource::shared().setAvailable(available);
}

void EmbeddedHost::setFramesPerSecond(double framesPerSecond) {
    const platform::Environment::Scope scope(*environment_);
    grid_ = platform::FrameGrid(framesPerSecond);
    MainQueue::main().setFrameGrid(grid_);
    nextPass_.reset(); // it belonged to the old frame grid
}

bool EmbeddedHost::contextWasReplaced(platform::GLBindings gl) {
    const Call call(*this);
    GLDevice::main().uninstall();
    if (!GLDevice::main().install(std::move(gl)))
        return false;
    lowerDecodeLimit(GLDevice::main().maxTextureSidePx());
    platform::NotificationCenter::defaultCenter().post(platform::kGLContextWasReplaced);
    window_->setNeedsDisplay();

    return true;
}

EmbeddedHostStatus EmbeddedHost::runDueWork() {
    const Call call(*this);
    MainQueue& queue = MainQueue::main();
    const Instant now = clock_->now();
    const Instant instant = grid_.atOrBefore(now);
    // A late call still counts for the instant at which the host was asked to call again.
    const auto due = queue.nextDeadline();
    const bool atInstant =
        now == instant || (due && *due <= instant) || (nextPass_ && *nextPass_ <= now);
    queue.runDue();
    EmbeddedHostStatus status;
    status.drawNow = mayDraw(now, atInstant);
    status.nextDeadline = queue.nextDeadline();
    if (nextPass_ && (!status.nextDeadline || *nextPass_ < *status.nextDeadline))
        status.nextDeadline = nextPass_;

    return status;
}

bool EmbeddedHost::mayDraw(Instant now, bool atInstant) {
    if (!window_->needsDisplay()) {
        nextPass_.reset();
        return false;
    }
    const bool drawnAlready = lastPassInstant_ == grid_.atOrBefore(now);
    if (window_->needsDisplayAtOnce() || (atInstant && !drawnAlready)) {
        nextPass_ = now;
        return true;
    }
    if (!nextPass_ || *nextPass_ <= now)
        nextPass_ = grid_.after(now);
    return false;
}

void EmbeddedHost::draw(std::uint32_t framebuffer, platform::RectPx area) {
    const Call call(*this);
    GLDevice::main().makeCurrent();
    window_->draw({framebuffer, area, platform::Screen::mainScreen().scale(), true});
    lastPassInstant_ = grid_.atOrBefore(clock_->now());
    nextPass_.reset();
}

bool EmbeddedHost::isTransparent() const {
    return window_->isTransparent();
}

void EmbeddedHost::catchUp() {
    GLDevice::main().makeCurrent();
    platform::Player::catchUp();
    // Only a virtual clock stands still while frames are decoded.
    while (clock_->isVirtual() && platform::Player::isAnyBehind()) {
        MainQueue::main().runDue();
        const auto next = MainQueue::main().nextDeadline();
        if (platform::Player::isAnyBehind() && !(next && *next <= now()))
            signal_->wait();
    }
}

platform::Result<platform::ImagePtr> EmbeddedHost::snapshot(double scale) {
    const Call call(*this);
    catchUp();
    return window_->snapshot(scale);
}

} // namespace zanto
