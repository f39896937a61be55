#pragma once

#include "Platform/Interface/GestureRecognizer.h"
#include "Platform/Interface/Touch.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace platform {

/// The gesture recognisers of one view, which compete for the touches on it.
///
/// Owner:  the view, which the caller keeps alive during the calls that deliver touches.
/// Thread: main.
class GestureArena {
public:
    using Recognizers = std::vector<std::shared_ptr<GestureRecognizer>>;

    [[nodiscard]] const Recognizers& recognizers() const { return recognizers_; }
    void add(const std::shared_ptr<GestureRecognizer>& recognizer);
    /// Cancels the recogniser's gesture if it is running.
    void remove(const std::shared_ptr<GestureRecognizer>& recognizer);

    void touchDown(const TouchEvent& event, double slop);
    /// A touch that did not begin on the view is ignored.
    void touchMoved(const TouchEvent& event);
    void touchUp(const TouchEvent& event);
    /// Removes all touches from the view and cancels the running gesture.
    void cancelTouches();

private:
    friend class GestureRecognizer; // fails the others once it recognises its gesture

    /// Calls `question` for each recogniser that is possible or running.
    void ask(const std::function<void(GestureRecognizer&)>& question);
    void failOthers(const GestureRecognizer& winner);
    void forgetOnceEmpty();
    [[nodiscard]] std::shared_ptr<Touch> find(std::int64_t id) const;
    void lift(std::int64_t id);
    void handOutTouches();

    Recognizers recognizers_;
    std::vector<std::shared_ptr<Touch>> touches_;
};

} // namespace platform
