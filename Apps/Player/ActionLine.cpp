#include "Apps/Player/ActionLine.h"

#include <algorithm>
#include <cmath>
#include <limits>

using nlohmann::json;

namespace {

/// JSON's numbers are exact in every program up to here.
constexpr double kIntegersEnd = 9007199254740992.0;
/// Later instants would not fit beside each other into a clock of nanoseconds.
constexpr double kLatestSecond = 1e6;
constexpr int kMostOwnTouches = 2;

std::string quoted(const std::string& name) {
    return "\"" + name + "\"";
}

bool isFinite(const json& value) {
    return value.is_number() && std::isfinite(value.get<double>());
}

} // namespace

ActionLine::ActionLine(const std::string& text, int number)
    : object_(json::parse(text, nullptr, false)), number_(number) {
    if (object_.is_discarded())
        throw LineRefused("this is not JSON");
    if (!object_.is_object())
        throw LineRefused("this is not a JSON object");
}

const json& ActionLine::member(const std::string& name) const {
    const auto found = object_.find(name);
    if (found == object_.end())
        throw LineRefused(quoted(name) + " is missing");
    return *found;
}

double ActionLine::at() const {
    const double seconds = number("at");
    if (seconds < 0)
        throw LineRefused("\"at\" is below 0");
    if (seconds > kLatestSecond)
        throw LineRefused("\"at\" is over 1000000 seconds");
    return seconds;
}

double ActionLine::number(const std::string& name) const {
    const json& value = member(name);
    if (!isFinite(value))
        throw LineRefused(quoted(name) + " is not a number");
    return value.get<double>();
}

std::int64_t ActionLine::integer(const std::string& name) const {
    const json& value = member(name);
    const double number = isFinite(value) ? value.get<double>() : kIntegersEnd;
    if (number != std::trunc(number) || std::abs(number) >= kIntegersEnd)
        throw LineRefused(quoted(name) + " is not an integer");
    return static_cast<std::int64_t>(number);
}

std::string ActionLine::text(const std::string& name) const {
    const json& value = member(name);
    if (!value.is_string())
        throw LineRefused(quoted(name) + " is not a text");
    return value.get<std::string>();
}

bool ActionLine::flag(const std::string& name) const {
    const json& value = member(name);
    if (!value.is_boolean())
        throw LineRefused(quoted(name) + " is not true or false");
    return value.get<bool>();
}

std::vector<double> ActionLine::numbers(const std::string& name, std::size_t count,
                                        std::string_view shape) const {
    const json& value = member(name);
    if (!value.is_array() || value.size() != count ||
        !std::all_of(value.begin(), value.end(), isFinite))
        throw LineRefused(quoted(name) + " is not " + std::string(shape));
    return value.get<std::vector<double>>();
}

std::int64_t ActionLine::ownTouchId(int finger) const {
    return std::numeric_limits<std::int64_t>::min() +
           static_cast<std::int64_t>(number_) * kMostOwnTouches + finger;
}
