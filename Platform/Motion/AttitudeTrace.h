#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Motion/AttitudeSource.h"

#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// Attitudes recorded over time, as text with one line per attitude: `seconds,x,y,z,w`.
///
/// These words may also be a heading before the first sample. Empty lines and lines that begin with
/// # are skipped; fields may have spaces and tabs around them, lines may end with CR and LF.
/// Numbers have a decimal point, whatever the locale is.
///
/// Thread: any; thread-safe. A trace is immutable.
class ZANTO_EXPORT AttitudeTrace {
public:
    struct Sample {
        /// Since the trace's zero; never before the preceding sample.
        Instant at;
        /// Of unit length, whatever length it had in the text.
        Attitude attitude;
        friend bool operator==(const Sample&, const Sample&) = default;
    };

    /// `name` is what messages call the text, for instance its file name. A text without samples is
    /// an empty trace.
    ///
    /// Errors: Corrupt, with the line, counted from 1, and the field.
    [[nodiscard]] static Result<AttitudeTrace> read(std::string_view text, std::string_view name);

    [[nodiscard]] const std::vector<Sample>& samples() const { return samples_; }

private:
    explicit AttitudeTrace(std::vector<Sample> samples) : samples_(std::move(samples)) {}

    std::vector<Sample> samples_;
};

} // namespace platform
