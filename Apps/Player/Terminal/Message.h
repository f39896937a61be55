#pragma once

#include <string>
#include <string_view>

/// Prints one message line for the user to standard error.
void tell(std::string_view message);

/// Prints text to standard output and flushes it, because a pipe would buffer it until the program
/// exits.
void print(const std::string& text);
