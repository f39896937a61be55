#pragma once

#include "Apps/Player/TracedController.h"

#include <string>

/// Hands a controller what the command line names: a file or an address, the built-in panorama when
/// it is empty. What an address leads to comes with a later turn of the host.
void prepareContent(TracedController& controller, const std::string& input);

/// Whether there is something to show; if not, the person has been told why.
[[nodiscard]] bool contentIsOpen(const TracedController& controller, const std::string& input);
