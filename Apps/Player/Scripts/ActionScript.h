#pragma once

#include "Apps/Player/Scripts/Action.h"
#include "Platform/Foundation/Result.h"

#include <istream>
#include <string>
#include <vector>

/// Reads a script of JSON lines, one action each, in time order; docs/scripts.md is their manual.
/// Empty lines are skipped. Lines that stand for a gesture give the touches that it is made of, so
/// everything comes in the order in which it happens, equal times in that of the lines. Files that
/// it names are relative to its folder.
///
/// Errors: Missing or Unreadable (the file), Corrupt (the first line that is not an action); the
///         detail names file, line and reason.
[[nodiscard]] platform::Result<std::vector<Action>> readActionScript(const std::string& path);

/// The same from a stream; `name` stands for the file in messages.
[[nodiscard]] platform::Result<std::vector<Action>> readActionScript(std::istream& stream,
                                                                     const std::string& name);
