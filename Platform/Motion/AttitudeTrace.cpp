#include "Platform/Motion/AttitudeTrace.h"

#include "Platform/Motion/AttitudeMath.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>

namespace platform {

namespace {

constexpr std::array<std::string_view, 5> kFields = {"seconds", "x", "y", "z", "w"};
using Numbers = std::array<double, kFields.size()>;
// Thirty years; an `Instant` can hold far more.
constexpr double kLongestSeconds = 1e9;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kSpace = " \t\r";
    const auto first = text.find_first_not_of(kSpace);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

/// Removes the text up to and including the separator, and returns it without the separator.
std::string_view takeUntil(char separator, std::string_view& text) {
    const auto end = text.find(separator);
    const auto taken = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return taken;
}

std::vector<std::string_view> fieldsOf(std::string_view line) {
    std::vector<std::string_view> fields;
    bool more = true;
    while (more) {
        more = line.find(',') != std::string_view::npos;
        fields.push_back(trimmed(takeUntil(',', line)));
    }
    return fields;
}

/// For a message on one line: shortened, and without control characters for a terminal.
std::string quoted(std::string_view text) {
    constexpr std::size_t kLongest = 40;
    std::string shown(text.substr(0, kLongest));
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return '"' + shown + (text.size() > kLongest ? "…\"" : "\"");
}

bool isHeading(const std::vector<std::string_view>& fields) {
    return std::equal(fields.begin(), fields.end(), kFields.begin(), kFields.end());
}

/// Reads line after line. Each function returns a description of the error, or nothing.
class Reader {
public:
    std::optional<std::string> readLine(std::string_view line) {
        line = trimmed(line);
        if (line.empty() || line.front() == '#')
            return std::nullopt;
        const auto fields = fieldsOf(line);
        const bool first = std::exchange(first_, false);
        if (first && isHeading(fields))
            return std::nullopt;
        Numbers numbers{};
        if (auto wrong = readNumbers(fields, numbers))
            return wrong;
        return addSample(numbers);
    }

    std::vector<AttitudeTrace::Sample> samples;

private:
    static std::optional<std::string> readNumbers(const std::vector<std::string_view>& fields,
                                                  Numbers& numbers) {
        if (fields.size() != kFields.size())
            return std::to_string(fields.size()) + (fields.size() == 1 ? " field" : " fields") +
                   " instead of " + std::to_string(kFields.size()) + ": seconds,x,y,z,w";
        for (std::size_t i = 0; i < kFields.size(); ++i)
            if (const char* wrong = readNumber(fields[i], numbers[i]))
                return std::string(kFields[i]) + ": " + quoted(fields[i]) + " " + wrong;
        return std::nullopt;
    }

    static const char* readNumber(std::string_view text, double& number) {
        const char* const end = text.data() + text.size();
        const auto [last, error] = std::from_chars(text.data(), end, number);
        if (error == std::errc::result_out_of_range)
            return "is out of range";
        if (error != std::errc() || last != end)
            return "is not a number";
        return std::isfinite(number) ? nullptr : "is not finite";
    }

    std::optional<std::string> addSample(const Numbers& numbers) {
        const auto& [seconds, x, y, z, w] = numbers;
        if (std::abs(seconds) > kLongestSeconds)
            return "seconds: beyond a thousand million";
        const Instant at = fromSeconds(seconds);
        if (!samples.empty() && at < samples.back().at)
            return "seconds: go backwards";
        if (x == 0 && y == 0 && z == 0 && w == 0)
            return "x,y,z,w: all zero, which is no attitude";
        samples.push_back({at, normalized({x, y, z, w})});
        return std::nullopt;
    }

    bool first_ = true;
};

} // namespace

Result<AttitudeTrace> AttitudeTrace::read(std::string_view text, std::string_view name) {
    Reader reader;
    for (std::size_t line = 1; !text.empty(); ++line)
        if (const auto wrong = reader.readLine(takeUntil('\n', text)))
            return Error{ErrorCode::Corrupt,
                         std::string(name) + ": line " + std::to_string(line) + ": " + *wrong};
    return AttitudeTrace(std::move(reader.samples));
}

} // namespace platform
