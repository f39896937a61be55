#pragma once

#include "Apps/Player/Terminal/CommandLine.h"
#include "Apps/Player/Terminal/ExitCode.h"

/// Renders the images that the command asks for, through the public controller and in virtual time.
[[nodiscard]] ExitCode render(const RenderCommand& command);
