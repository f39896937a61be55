#include "Apps/Player/Scripts/ActionLine.h"

#include <limits>
#include <utility>

namespace {

/// A limit that keeps times, and sums of times, within the range of a nanosecond clock.
constexpr double kLatestSecond = 1e6;
constexpr int kMostOwnTouches = 2;

nlohmann::json parsed(const std::string& text) try {
    return parsedJson(text);
} catch (const nlohmann::json::exception&) {
    throw LineRefused("this is not JSON");
}

} // namespace

ActionLine::ActionLine(const std::string& text, int number, std::string folder)
    : Members(parsed(text)), number_(number), folder_(std::move(folder)) {}

double ActionLine::at() const {
    const double seconds = number("at");
    if (seconds < 0)
        throw LineRefused("\"at\" is below 0");
    if (seconds > kLatestSecond)
        throw LineRefused("\"at\" is over 1000000 seconds");
    return seconds;
}

std::int64_t ActionLine::ownTouchId(int finger) const {
    return std::numeric_limits<std::int64_t>::min() +
           static_cast<std::int64_t>(number_) * kMostOwnTouches + finger;
}
