#include "Hosts/Headless/HeadlessHost.h"

#include "Hosts/Headless/SurfacelessContext.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Platform/Interface/Screen.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

using platform::Instant;
using platform::MainQueue;
using platform::Result;

/// Lets the loop sleep until something is queued.
struct HeadlessHost::WakeUp {
    std::mutex mutex; // guards rung
    std::condition_variable condition;
    bool rung = false;

    void ring() {
        {
            const std::scoped_lock lock(mutex);
            rung = true;
        }
        condition.notify_one();
    }
    void wait(std::optional<Instant> longest) {
        std::unique_lock lock(mutex);
        if (longest)
            condition.wait_for(lock, *longest, [this] { return rung; });
        else
            condition.wait(lock, [this] { return rung; });
        rung = false;
    }
};

Result<std::unique_ptr<HeadlessHost>> HeadlessHost::create(const HeadlessHostOptions& options) {
    auto context = SurfacelessContext::create();
    if (!context)
        return context.error();
    std::unique_ptr<HeadlessHost> host(new HeadlessHost(std::move(context).value(), options));
    EmbeddedHostOptions embedding;
    embedding.gl = {[&context = *host->context_] { context.makeCurrent(); },
                    SurfacelessContext::procAddress};
    embedding.size = options.size;
    embedding.scale = options.scale;
    embedding.clock = host->virtualClock_;
    embedding.wakeUp = [wakeUp = host->wakeUp_] { wakeUp->ring(); };
    auto embedded = EmbeddedHost::create(std::move(embedding));
    if (!embedded)
        return embedded.error();
    host->embedded_ = std::move(embedded).value();
    return host;
}

HeadlessHost::HeadlessHost(std::unique_ptr<SurfacelessContext> context,
                           const HeadlessHostOptions& options)
    : context_(std::move(context)), wakeUp_(std::make_shared<WakeUp>()) {
    if (options.time == HeadlessHostOptions::Time::Virtual)
        virtualClock_ = std::make_shared<platform::VirtualClock>();
}

HeadlessHost::~HeadlessHost() = default;

EmbeddedHostStatus HeadlessHost::turn() {
    EmbeddedHostStatus status = embedded_->runDueWork();
    if (status.drawNow) {
        present();
        status = embedded_->runDueWork();
    }
    return status;
}

void HeadlessHost::present() {
    const platform::Rect native = platform::Screen::mainScreen().nativeBounds();
    const platform::Size points = platform::Screen::mainScreen().bounds().size;
    const bool wide = points.width > points.height;
    const auto shorter = static_cast<int>(native.size.width);
    const auto longer = static_cast<int>(native.size.height);
    const platform::SizePx size{wide ? longer : shorter, wide ? shorter : longer};
    if (!target_ || target_->size() != size) {
        target_.reset();
        auto target = platform::OffscreenTarget::create(size);
        if (!target)
            return platform::log(platform::LogLevel::Error, "headless: " + target.error().detail);
        target_ = std::move(target).value();
    }
    embedded_->draw(target_->framebuffer(), {0, 0, size.width, size.height});
    ++framesPresented_;
}

void HeadlessHost::settle() {
    runThisInstant(WaitForWork::Yes);
}

void HeadlessHost::runThisInstant(WaitForWork wait) {
    for (;;) {
        const EmbeddedHostStatus status = turn();
        const bool due = status.drawNow || (status.nextDeadline && *status.nextDeadline <= now());
        if (due)
            continue;
        if (wait == WaitForWork::No || MainQueue::main().outstandingWork() == 0)
            return;
        wakeUp_->wait(std::nullopt);
    }
}

void HeadlessHost::advanceTo(Instant instant) {
    // Real time goes on while work is under way; virtual time stands still for it.
    const WaitForWork wait = virtualClock_ ? WaitForWork::Yes : WaitForWork::No;
    for (;;) {
        runThisInstant(wait);
        const EmbeddedHostStatus status = turn();
        const bool more = status.nextDeadline && *status.nextDeadline <= instant;
        const Instant next = more ? *status.nextDeadline : instant;
        if (virtualClock_)
            virtualClock_->advanceTo(next);
        else if (next > now())
            wakeUp_->wait(next - now());
        if (!more && now() >= instant)
            break;
    }
    runThisInstant(wait);
}
