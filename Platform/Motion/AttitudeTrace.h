#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Motion/AttitudeSource.h"

#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// Attitudes recorded over time, as text: a line for each, `seconds,x,y,z,w`.
///
/// The same words may stand as a heading before the first sample. Empty lines and lines that begin
/// with # are skipped; fields may have spaces and tabs around them, lines may end with CR and LF.
/// Numbers have a point, whatever the locale.
///
/// Thread: any; it does not change.
class ZANTO_EXPORT AttitudeTrace {
public:
    struct Sample {
        /// Since the trace's own zero; never before the sample before.
        Instant at;
        /// Of unit length, whatever length it had in the text.
        Attitude attitude;
        friend bool operator==(const Sample&, const Sample&) = default;
    };

    /// `name`: what messages call the text, for instance its file name. A text without samples is
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
