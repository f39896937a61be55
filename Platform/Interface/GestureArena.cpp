#include "Platform/Interface/GestureArena.h"

#include <algorithm>

namespace platform {
namespace {

bool takesPart(const GestureState state) {
    return state == GestureState::Possible || state == GestureState::Began ||
           state == GestureState::Changed;
}

bool contains(const GestureArena::Recognizers& all,
              const std::shared_ptr<GestureRecognizer>& recognizer) {
    return std::find(all.begin(), all.end(), recognizer) != all.end();
}

} // namespace

void GestureArena::add(const std::shared_ptr<GestureRecognizer>& recognizer) {
    recognizers_.push_back(recognizer);
    // A new recogniser ignores touches that are down already.
    recognizer->state_ = touches_.empty() ? GestureState::Possible : GestureState::Failed;
}

void GestureArena::remove(const std::shared_ptr<GestureRecognizer>& recognizer) {
    // A shared pointer, because the argument may be an element of the list.
    std::shared_ptr<GestureRecognizer> kept;
    kept = recognizer;
    std::erase(recognizers_, kept);
    if (kept->isRunning())
        kept->enter(GestureState::Cancelled);
    kept->touches_.clear();
    kept->state_ = GestureState::Possible;
}

void GestureArena::ask(const std::function<void(GestureRecognizer&)>& question) {
    handOutTouches();
    // A copy, because an action may add and remove recognisers.
    const Recognizers all = recognizers_;
    for (const auto& recognizer : all) {
        if (touches_.empty())
            return; // an action cancelled them
        if (takesPart(recognizer->state()) && contains(recognizers_, recognizer))
            question(*recognizer);
    }
}

void GestureArena::failOthers(const GestureRecognizer& winner) {
    for (const auto& recognizer : recognizers_) {
        if (recognizer.get() != &winner && recognizer->state() == GestureState::Possible)
            recognizer->enter(GestureState::Failed);
    }
}

void GestureArena::handOutTouches() {
    for (const auto& recognizer : recognizers_)
        recognizer->touches_.assign(touches_.begin(), touches_.end());
}

std::shared_ptr<Touch> GestureArena::find(std::int64_t id) const {
    const auto found = std::find_if(touches_.begin(), touches_.end(),
                                    [id](const auto& touch) { return touch->id() == id; });
    return found == touches_.end() ? nullptr : *found;
}

void GestureArena::lift(std::int64_t id) {
    std::erase_if(touches_, [id](const auto& touch) { return touch->id() == id; });
    handOutTouches();
}

void GestureArena::touchDown(const TouchEvent& event, double slop) {
    if (find(event.id))
        return;
    touches_.push_back(std::make_shared<Touch>(event, slop));
    ask([](GestureRecognizer& recognizer) { recognizer.touchDown(); });
}

void GestureArena::touchMoved(const TouchEvent& event) {
    const auto touch = find(event.id);
    if (!touch)
        return;
    touch->report(event);
    ask([&touch](GestureRecognizer& recognizer) { recognizer.touchMoved(*touch); });
}

void GestureArena::touchUp(const TouchEvent& event) {
    const auto touch = find(event.id);
    if (!touch)
        return;
    touch->report(event);
    ask([&touch](GestureRecognizer& recognizer) { recognizer.touchUp(*touch); });
    lift(event.id);
    forgetOnceEmpty();
}

void GestureArena::cancelTouches() {
    if (touches_.empty())
        return;
    ask([](GestureRecognizer& recognizer) {
        recognizer.enter(recognizer.isRunning() ? GestureState::Cancelled : GestureState::Failed);
    });
    touches_.clear();
    handOutTouches();
    forgetOnceEmpty();
}

void GestureArena::forgetOnceEmpty() {
    if (!touches_.empty())
        return;
    for (const auto& recognizer : recognizers_) {
        recognizer->state_ = GestureState::Possible;
        recognizer->forget();
    }
}

} // namespace platform
