#pragma once

#include "Platform/Interface/GestureRecognizer.h"
#include "Platform/Interface/Touch.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace platform {

/// The recognisers of one view and the fingers on it.
///
/// Owner:  the view, which is kept alive by the caller while touches are handed in.
/// Thread: main.
class GestureArena {
public:
    using Recognizers = std::vector<std::shared_ptr<GestureRecognizer>>;

    [[nodiscard]] const Recognizers& recognizers() const { return recognizers_; }
    void add(const std::shared_ptr<GestureRecognizer>& recognizer);
    /// A running gesture is cancelled.
    void remove(const std::shared_ptr<GestureRecognizer>& recognizer);

    void touchDown(const TouchEvent& event, double slop);
    /// A finger that is not on the view is ignored.
    void touchMoved(const TouchEvent& event);
    void touchUp(const TouchEvent& event);
    /// Takes all fingers off the view; what was running is cancelled.
    void cancelTouches();

private:
    friend class GestureRecognizer; // fails the others once it recognises

    /// Asks each recogniser that still takes part.
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
