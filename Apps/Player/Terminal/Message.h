#pragma once

#include <string>
#include <string_view>

/// Writes one line for the person at the terminal to standard error.
void tell(std::string_view message);

/// Writes text to standard output at once; a pipe would hold it back until the program ends.
void print(const std::string& text);
