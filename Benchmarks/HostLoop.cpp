#include "Benchmarks/HostLoop.h"

#include "Platform/Foundation/MainQueue.h"
#include "Platform/Graphics/TextureCache.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

using platform::Instant;

namespace {

std::unique_ptr<zanto::HeadlessHost> makeHost(platform::SizePx size) {
    auto host = zanto::HeadlessHost::create(
        {{static_cast<double>(size.width), static_cast<double>(size.height)},
         1,
         zanto::HeadlessHostOptions::Time::Real});
    if (!host)
        throw std::runtime_error(host.error().detail);
    return std::move(host).value();
}

} // namespace

HostLoop::HostLoop(platform::SizePx size)
    : host_(makeHost(size)), target_(std::move(platform::OffscreenTarget::create(size)).value()) {
    platform::MainQueue::main().setWakeUp([this] {
        {
            const std::scoped_lock lock(mutex_);
            isAwake_ = true;
        }
        wakeUp_.notify_one();
    });
}

HostLoop::~HostLoop() {
    embedded().setRootViewController(nullptr);
    target_.reset();
    host_.reset();
}

bool HostLoop::runUntil(const std::function<bool()>& condition, Instant longest) {
    const Instant end = embedded().now() + longest;
    for (;;) {
        zanto::EmbeddedHostStatus status;
        longestTurn_.time([&] { status = embedded().runDueWork(); });
        ++turns_;
        if (status.drawNow) {
            draw();
            continue;
        }
        if (condition())
            return true;
        const Instant now = embedded().now();
        if (now >= end)
            return false;
        sleep(std::min(status.nextDeadline.value_or(end), end) - now);
    }
}

void HostLoop::draw() {
    const std::uint64_t planes = platform::TextureCache::uploadedPlanes();
    if (std::exchange(drawnPlanes_, planes) != planes)
        newFrames_.push_back(embedded().now());
    ++draws_;
    const platform::SizePx size = target_->size();
    embedded().draw(target_->framebuffer(), {0, 0, size.width, size.height});
    glFinish(); // as presenting would
}

void HostLoop::sleep(Instant longest) {
    std::unique_lock lock(mutex_);
    if (longest > Instant::zero())
        wakeUp_.wait_for(lock, longest, [this] { return isAwake_; });
    isAwake_ = false;
}

void HostLoop::startCounting() {
    turns_ = 0;
    draws_ = 0;
    newFrames_.clear();
    drawnPlanes_ = platform::TextureCache::uploadedPlanes();
    longestTurn_.reset();
}
