#pragma once

#include <string_view>

/// Writes one line for the person at the terminal to standard error.
void tell(std::string_view message);
