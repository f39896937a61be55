#pragma once

#include "Apps/Player/CommandLine.h"
#include "Apps/Player/ExitCode.h"

/// Writes the pictures that the command asks for, through the public controller and in virtual
/// time.
[[nodiscard]] ExitCode render(const RenderCommand& command);
