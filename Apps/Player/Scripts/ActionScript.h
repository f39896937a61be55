#pragma once

#include "Apps/Player/Scripts/Action.h"
#include "Platform/Foundation/Result.h"

#include <istream>
#include <string>
#include <vector>

/// Reads a script of JSON lines, one action per line, in time order; docs/scripts.md describes
/// them. Empty lines are skipped. A line that describes a gesture yields all of its touches. The
/// result is sorted by time; actions at the same time keep the order of their lines. File paths in
/// the script are relative to its folder.
///
/// Errors: Missing or Unreadable (the file), Corrupt (the first invalid line); the detail names the
///         file, the line and the reason.
[[nodiscard]] platform::Result<std::vector<Action>> readActionScript(const std::string& path);

/// The same for a stream; messages use `name` as the file's name.
[[nodiscard]] platform::Result<std::vector<Action>> readActionScript(std::istream& stream,
                                                                     const std::string& name);
