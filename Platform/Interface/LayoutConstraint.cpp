#include "Platform/Interface/LayoutConstraint.h"

#include "Platform/Foundation/Assertion.h"
#include "Platform/Interface/View.h"

#include <algorithm>
#include <cstddef>
#include <regex>
#include <utility>

namespace platform {
namespace {

struct ParsedFormat {
    LayoutConstraint::Axis axis = LayoutConstraint::Axis::Horizontal;
    std::vector<std::string> names;
    double gap = 0;
};

[[noreturn]] void refuse(std::string_view format) {
    failAssertion("LayoutConstraint", __LINE__,
                  "Unable to parse constraint format \"" + std::string(format) + "\"");
}

ParsedFormat parse(std::string_view format) {
    static const std::regex whole(R"((H:|V:)?\|(\[\w+(\(==\w+\))?\])(-(\d+)-\[\w+\])*\|)");
    static const std::regex view(R"(\[(\w+))");
    const std::string text(format);
    std::smatch match;
    if (!std::regex_match(text, match, whole))
        refuse(format);
    ParsedFormat parsed;
    if (match[1] == "V:")
        parsed.axis = LayoutConstraint::Axis::Vertical;
    if (match[5].matched)
        parsed.gap = std::stod(match[5]);
    for (std::sregex_iterator name(text.begin(), text.end(), view), end; name != end; ++name)
        parsed.names.push_back((*name)[1]);
    return parsed;
}

} // namespace

std::vector<std::shared_ptr<LayoutConstraint>> LayoutConstraint::constraintsWithVisualFormat(
    std::string_view format, unsigned /*options*/,
    const std::map<std::string, std::shared_ptr<View>>& views) {
    const ParsedFormat parsed = parse(format);
    std::vector<std::weak_ptr<View>> row;
    for (const std::string& name : parsed.names) {
        const auto found = views.find(name);
        if (found == views.end() || !found->second)
            refuse(format);
        row.push_back(found->second);
    }
    return {std::shared_ptr<LayoutConstraint>(
        new LayoutConstraint(parsed.axis, std::move(row), parsed.gap))};
}

LayoutConstraint::LayoutConstraint(Axis axis, std::vector<std::weak_ptr<View>> views, double gap)
    : axis_(axis), views_(std::move(views)), gap_(gap) {}

std::shared_ptr<View> LayoutConstraint::superview() const {
    const auto first = views_.front().lock();
    return first ? first->superview() : nullptr;
}

bool LayoutConstraint::isActive() const {
    const auto holder = superview();
    return holder && std::any_of(holder->activeConstraints_.begin(), holder->activeConstraints_.end(),
                                 [&](const auto& active) { return active.get() == this; });
}

void LayoutConstraint::activateConstraints(
    const std::vector<std::shared_ptr<LayoutConstraint>>& constraints) {
    for (const auto& constraint : constraints) {
        const auto holder = constraint->superview();
        if (holder && !constraint->isActive())
            holder->activeConstraints_.push_back(constraint);
    }
}

void LayoutConstraint::deactivateConstraints(
    const std::vector<std::shared_ptr<LayoutConstraint>>& constraints) {
    for (const auto& constraint : constraints) {
        if (const auto holder = constraint->superview())
            std::erase(holder->activeConstraints_, constraint);
    }
}

void LayoutConstraint::apply(const View& superview) const {
    const Size whole = superview.bounds().size;
    const auto count = static_cast<double>(views_.size());
    const double length = axis_ == Axis::Horizontal ? whole.width : whole.height;
    const double each = std::max(0.0, (length - gap_ * (count - 1)) / count);
    double start = 0;
    for (const auto& weakView : views_) {
        if (const auto view = weakView.lock()) {
            Rect frame = view->frame();
            (axis_ == Axis::Horizontal ? frame.origin.x : frame.origin.y) = start;
            (axis_ == Axis::Horizontal ? frame.size.width : frame.size.height) = each;
            view->setFrame(frame);
        }
        start += each + gap_;
    }
}

} // namespace platform
