#include "Platform/Interface/LayoutConstraint.h"

#include "Platform/Foundation/Assertion.h"
#include "Platform/Interface/View.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <optional>
#include <system_error>
#include <utility>

namespace platform {
namespace {

struct ParsedFormat {
    LayoutConstraint::Axis axis = LayoutConstraint::Axis::Horizontal;
    std::vector<std::string> names;
    std::string equal; // the name in "(==name)", or empty
    double gap = 0;
};

[[noreturn]] void refuse(std::string_view format) {
    failAssertion("LayoutConstraint", __LINE__,
                  "Unable to parse constraint format \"" + std::string(format) + "\"");
}

/// Consumes a format from its front. Returns false or an empty word if the expected text is not
/// there.
class FormatReader {
public:
    explicit FormatReader(std::string_view format) : rest_(format) {}

    bool take(std::string_view text) {
        if (!rest_.starts_with(text))
            return false;
        rest_.remove_prefix(text.size());
        return true;
    }
    std::string takeWord() {
        std::size_t length = 0;
        while (length < rest_.size() && isWordCharacter(rest_[length]))
            ++length;
        std::string word(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return word;
    }
    [[nodiscard]] bool atEnd() const { return rest_.empty(); }

private:
    static bool isWordCharacter(char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
    }
    std::string_view rest_;
};

/// The gap in points, or `nullopt` for a word that is not a number.
std::optional<double> gapOf(const std::string& word) {
    int points = 0;
    const char* const end = word.data() + word.size();
    const auto [rest, failed] = std::from_chars(word.data(), end, points);
    return failed == std::errc() && rest == end ? std::optional<double>(points) : std::nullopt;
}

/// Reads `[name]` or `[name(==other)]`.
bool readView(FormatReader& reader, ParsedFormat& parsed) {
    if (!reader.take("["))
        return false;
    parsed.names.push_back(reader.takeWord());
    if (reader.take("(==")) {
        parsed.equal = reader.takeWord();
        if (parsed.equal.empty() || !reader.take(")"))
            return false;
    }
    return !parsed.names.back().empty() && reader.take("]");
}

ParsedFormat parse(std::string_view format) {
    ParsedFormat parsed;
    FormatReader reader(format);
    if (reader.take("V:"))
        parsed.axis = LayoutConstraint::Axis::Vertical;
    else
        reader.take("H:");
    bool fits = reader.take("|") && readView(reader, parsed);
    while (fits && reader.take("-")) {
        const auto gap = gapOf(reader.takeWord());
        // All gaps must be equal.
        fits = gap && (parsed.names.size() == 1 || *gap == parsed.gap) && reader.take("-") &&
               readView(reader, parsed);
        parsed.gap = gap.value_or(0);
    }
    if (!fits || !reader.take("|") || !reader.atEnd())
        refuse(format);
    return parsed;
}

} // namespace

std::vector<std::shared_ptr<LayoutConstraint>> LayoutConstraint::constraintsWithVisualFormat(
    std::string_view format, unsigned options,
    const std::map<std::string, std::shared_ptr<View>>& views) {
    const ParsedFormat parsed = parse(format);
    if (!parsed.equal.empty() && !views.contains(parsed.equal))
        refuse(format);
    std::vector<std::weak_ptr<View>> row;
    for (const std::string& name : parsed.names) {
        const auto found = views.find(name);
        if (found == views.end() || !found->second)
            refuse(format);
        row.push_back(found->second);
    }
    return {std::shared_ptr<LayoutConstraint>(
        new LayoutConstraint(parsed.axis, std::move(row), parsed.gap, options))};
}

LayoutConstraint::LayoutConstraint(Axis axis, std::vector<std::weak_ptr<View>> views, double gap,
                                   unsigned options)
    : axis_(axis), views_(std::move(views)), gap_(gap), options_(options) {}

std::shared_ptr<View> LayoutConstraint::superview() const {
    const auto first = views_.front().lock();
    return first ? first->superview() : nullptr;
}

bool LayoutConstraint::isActive() const {
    const auto holder = superview();
    return holder &&
           std::any_of(holder->activeConstraints_.begin(), holder->activeConstraints_.end(),
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
