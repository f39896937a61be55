#pragma once

#include "Apps/Player/Contents/Members.h"

#include <cstdint>
#include <string>

/// One line of an action script.
///
/// Errors: every reading function throws `LineRefused`, which names the member.
class ActionLine : public Members {
public:
    /// `number` is the line's number in its file. File paths in the line are relative to `folder`.
    ActionLine(const std::string& text, int number, std::string folder);

    /// The time of the line in virtual seconds.
    [[nodiscard]] double at() const;
    [[nodiscard]] const std::string& folder() const { return folder_; }

    /// The id of a finger that a gesture creates: it differs from every id that `integer()` can
    /// return and from the ids of other lines.
    [[nodiscard]] std::int64_t ownTouchId(int finger) const;

private:
    int number_;
    std::string folder_;
};
