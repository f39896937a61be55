#pragma once

#include "Apps/Player/Contents/Members.h"

#include <cstdint>
#include <string>

/// A line of an action script.
///
/// Errors: `LineRefused` from every function that reads, naming the member.
class ActionLine : public Members {
public:
    /// `number`: of the line in its file. `folder`: what the files that it names are relative to.
    ActionLine(const std::string& text, int number, std::string folder);

    /// The second that the line stands for.
    [[nodiscard]] double at() const;
    [[nodiscard]] const std::string& folder() const { return folder_; }

    /// The id of a finger that the line needs for itself: no `integer()` and no other line's.
    [[nodiscard]] std::int64_t ownTouchId(int finger) const;

private:
    int number_;
    std::string folder_;
};
