#include "Apps/Player/Contents/Members.h"

#include <algorithm>
#include <cmath>
#include <utility>

using nlohmann::json;

namespace {

/// Every program reads JSON integers below this limit exactly (2^53).
constexpr double kIntegersEnd = 9007199254740992.0;
/// The greatest nesting of lists and objects. Valid input nests four deep.
constexpr int kDeepest = 16;

bool isFinite(const json& value) {
    return value.is_number() && std::isfinite(value.get<double>());
}

/// Replaces control characters: one byte each, or two bytes in UTF-8 that begin with 0xC2.
std::string withoutControls(std::string text) {
    unsigned char before = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x20 || byte == 0x7F)
            text[i] = '?';
        else if (before == 0xC2 && byte < 0xA0)
            text[i - 1] = text[i] = '?';
        before = byte;
    }
    return text;
}

} // namespace

LineRefused::LineRefused(std::string why) : std::runtime_error(withoutControls(std::move(why))) {}

json parsedJson(const std::string& text) {
    return json::parse(text, [](int depth, json::parse_event_t, const json&) {
        if (depth > kDeepest)
            throw LineRefused("this is nested too deeply");
        return true;
    });
}

Members::Members(json object, std::string place)
    : object_(std::move(object)), place_(std::move(place)) {
    if (!object_.is_object())
        throw LineRefused((place_.empty() ? "this" : place_) + " is not a JSON object");
}

std::string Members::nameOf(const std::string& name) const {
    return place_.empty() ? "\"" + name + "\"" : place_ + "." + name;
}

const json& Members::member(const std::string& name) const {
    const auto found = object_.find(name);
    if (found == object_.end())
        throw LineRefused(nameOf(name) + " is missing");
    return *found;
}

double Members::number(const std::string& name) const {
    const json& value = member(name);
    if (!isFinite(value))
        throw LineRefused(nameOf(name) + " is not a number");
    return value.get<double>();
}

std::int64_t Members::integer(const std::string& name) const {
    const json& value = member(name);
    const double number = isFinite(value) ? value.get<double>() : kIntegersEnd;
    if (number != std::trunc(number) || std::abs(number) >= kIntegersEnd)
        throw LineRefused(nameOf(name) + " is not an integer");
    return static_cast<std::int64_t>(number);
}

std::string Members::text(const std::string& name) const {
    const json& value = member(name);
    if (!value.is_string())
        throw LineRefused(nameOf(name) + " is not a text");
    return value.get<std::string>();
}

bool Members::flag(const std::string& name) const {
    const json& value = member(name);
    if (!value.is_boolean())
        throw LineRefused(nameOf(name) + " is not true or false");
    return value.get<bool>();
}

std::vector<double> Members::numbers(const std::string& name, std::size_t count,
                                     std::string_view shape) const {
    const json& value = member(name);
    if (!value.is_array() || value.size() != count ||
        !std::all_of(value.begin(), value.end(), isFinite))
        throw LineRefused(nameOf(name) + " is not " + std::string(shape));
    return value.get<std::vector<double>>();
}

std::vector<Members> Members::objects(const std::string& name) const {
    const json& value = member(name);
    if (!value.is_array())
        throw LineRefused(nameOf(name) + " is not a list");
    std::vector<Members> all;
    for (const json& object : value)
        all.emplace_back(object, name + "[" + std::to_string(all.size()) + "]");
    return all;
}

void Members::allowOnly(std::initializer_list<std::string_view> names) const {
    for (const auto& [key, value] : object_.items()) {
        if (std::find(names.begin(), names.end(), key) == names.end())
            throw LineRefused((place_.empty() ? "unknown member" : place_ + " knows no") + " \"" +
                              key + "\"");
    }
}
