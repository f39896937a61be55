#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/Motion/AttitudeTrace.h"

#include <string>

/// Reads a recording of a device's attitude.
///
/// Errors: Missing or Unreadable (the file), Corrupt (an invalid line, or no sample at all); the
///         detail names the file.
[[nodiscard]] platform::Result<platform::AttitudeTrace>
readAttitudeTraceFile(const std::string& path);
