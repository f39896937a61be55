#include "Fuzz/Property.h"
#include "Fuzz/Targets.h"
#include "Platform/Motion/AttitudeTrace.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {
namespace {

using platform::Attitude;
using platform::AttitudeTrace;
using Samples = std::vector<AttitudeTrace::Sample>;

constexpr double kRounding = 1e-12;

bool isUnit(const Attitude& q) {
    const double length = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
    return std::abs(length - 1) < kRounding; // also false for NaN
}

bool isNear(const Attitude& a, const Attitude& b) {
    const std::array differences{a.x - b.x, a.y - b.y, a.z - b.z, a.w - b.w};
    return std::all_of(differences.begin(), differences.end(),
                       [](double difference) { return std::abs(difference) < kRounding; });
}

void append(std::string& text, double number, char separator) {
    std::array<char, 32> digits{};
    char* const end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    text.append(digits.begin(), end);
    text += separator;
}

std::string written(const Samples& samples) {
    std::string text = "seconds,x,y,z,w\n";
    for (const auto& [at, q] : samples) {
        append(text, platform::toSeconds(at), ',');
        append(text, q.x, ',');
        append(text, q.y, ',');
        append(text, q.z, ',');
        append(text, q.w, '\n');
    }
    return text;
}

void checkWrittenAgain(const Samples& samples) {
    const std::string text = written(samples);
    const auto again = AttitudeTrace::read(text, "again");
    require(again.ok(), "what was read can be written and read again: " + text);
    require(std::equal(samples.begin(), samples.end(), again.value().samples().begin(),
                       again.value().samples().end(),
                       [](const auto& a, const auto& b) { return isNear(a.attitude, b.attitude); }),
            "written and read again, it has the same attitudes: " + text);
}

} // namespace

void checkAttitudeTrace(Bytes input) {
    const std::string text(input.begin(), input.end());
    const auto trace = AttitudeTrace::read(text, "trace");
    if (!trace)
        return requireReadable(trace.error(), "trace: line ");
    const Samples& samples = trace.value().samples();
    require(std::is_sorted(samples.begin(), samples.end(),
                           [](const auto& a, const auto& b) { return a.at < b.at; }),
            "samples are in time order");
    require(std::all_of(samples.begin(), samples.end(),
                        [](const auto& sample) { return isUnit(sample.attitude); }),
            "attitudes are of unit length");
    checkWrittenAgain(samples);
}

} // namespace fuzz
