#include "Hosts/Headless/HeadlessHost.h"

#include "Hosts/Embedded/WakeUpSignal.h"
#include "Hosts/Headless/SurfacelessContext.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Graphics/OffscreenTarget.h"

#include <chrono>
#include <optional>
#include <utility>

namespace zanto {

using platform::Instant;
using platform::MainQueue;
using platform::Result;

Result<std::unique_ptr<HeadlessHost>> HeadlessHost::create(const HeadlessHostOptions& options) {
    auto context = SurfacelessContext::create();
    if (!context)
        return context.error();
    std::unique_ptr<HeadlessHost> host(new HeadlessHost(std::move(context).value(), options));
    EmbeddedHostOptions embedding;
    embedding.gl = host->bindings();
    embedding.size = options.size;
    embedding.scale = options.scale;
    embedding.clock = host->virtualClock_;
    embedding.touchSlop = options.touchSlop;
    embedding.log = options.log;
    embedding.wakeUp = [signal = host->signal_] { signal->ring(); };
    auto embedded = EmbeddedHost::create(std::move(embedding));
    if (!embedded)
        return embedded.error();
    host->embedded_ = std::move(embedded).value();
    return host;
}

HeadlessHost::HeadlessHost(std::unique_ptr<SurfacelessContext> context,
                           const HeadlessHostOptions& options)
    : context_(std::move(context)), signal_(std::make_shared<WakeUpSignal>()) {
    if (options.time == HeadlessHostOptions::Time::Virtual)
        virtualClock_ = std::make_shared<platform::VirtualClock>();
}

HeadlessHost::~HeadlessHost() {
    if (!embedded_)
        return;
    const auto environment = embedded_->environment();
    const platform::Environment::Scope scope(*environment);
    target_.reset();
    embedded_.reset();
}

void HeadlessHost::present() {
    const platform::Environment::Scope scope(*embedded_->environment());
    const platform::Rect native = platform::Screen::mainScreen().nativeBounds();
    const platform::Size points = platform::Screen::mainScreen().bounds().size;
    const bool wide = points.width > points.height;
    const auto shorter = static_cast<int>(native.size.width);
    const auto longer = static_cast<int>(native.size.height);
    const platform::SizePx size{wide ? longer : shorter, wide ? shorter : longer};
    if (size != targetSize_ || !target_)
        makeTarget(size);
    if (!target_)
        return;
    if (embedded_->isTransparent())
        target_->clear();
    embedded_->draw(target_->framebuffer(), {0, 0, target_->size().width, target_->size().height});
    framesPresented_ += target_->size() == size ? 1 : 0;
}

void HeadlessHost::makeTarget(platform::SizePx size) {
    targetSize_ = size;
    target_.reset();
    auto target = platform::OffscreenTarget::create(size);
    if (!target) {
        platform::log(platform::LogLevel::Error, "headless: " + target.error().detail);
        // A frame that is not shown but still counts as drawn; otherwise it would be requested
        // again forever.
        target = platform::OffscreenTarget::create({1, 1});
    }
    if (target)
        target_ = std::move(target).value();
}

platform::GLBindings HeadlessHost::bindings() {
    return {[this] { context_->makeCurrent(); }, SurfacelessContext::procAddress};
}

bool HeadlessHost::replaceContext() {
    const platform::Environment::Scope scope(*embedded_->environment());
    context_.reset();
    auto context = SurfacelessContext::create();
    if (!context) {
        platform::log(platform::LogLevel::Error, "headless: " + context.error().detail);
        return false;
    }
    context_ = std::move(context).value();
    const bool replaced = embedded_->contextWasReplaced(bindings());
    target_.reset();
    targetSize_ = {};
    return replaced;
}

void HeadlessHost::settle() {
    runThisInstant(WaitForWork::Yes);
}

EmbeddedHostStatus HeadlessHost::runThisInstant(WaitForWork wait) {
    const platform::Environment::Scope scope(*embedded_->environment());
    for (;;) {
        const EmbeddedHostStatus status = embedded_->runDueWork();
        const auto block = MainQueue::main().nextDeadline();
        if (block && *block <= now())
            continue;
        // Frames are drawn only when no work is in progress, so that the order of a completion and
        // a frame does not depend on the speed of the machine.
        if (wait == WaitForWork::Yes && MainQueue::main().outstandingWork() > 0)
            waitForWork();
        else if (status.drawNow)
            present();
        else
            return status;
    }
}

void HeadlessHost::waitForWork() {
    // In real time, the block that ends the work may be a delayed one.
    const auto block = MainQueue::main().nextDeadline();
    if (block && !virtualClock_)
        signal_->wait(*block - now());
    else
        signal_->wait(std::nullopt);
}

void HeadlessHost::advanceTo(Instant instant) {
    // In real time, time continues while work is in progress; virtual time stands still.
    const WaitForWork wait = virtualClock_ ? WaitForWork::Yes : WaitForWork::No;
    for (;;) {
        const EmbeddedHostStatus status = runThisInstant(wait);
        const bool more = status.nextDeadline && *status.nextDeadline <= instant;
        const Instant next = more ? *status.nextDeadline : instant;
        if (virtualClock_)
            virtualClock_->advanceTo(next);
        else if (next > now())
            signal_->wait(next - now());
        if (!more && now() >= instant)
            break;
    }
    runThisInstant(wait);
}

} // namespace zanto
