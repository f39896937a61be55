#pragma once

/// Marks what the shared libraries offer; everything else stays inside them.
///
/// A class with a function that is defined in a source file, or that somebody may derive from,
/// catch or cast to, has it, and so has every free function and constant of a public header. Some
/// classes behind the public headers have it because the hosts and the program are built on them;
/// their headers are not installed.
#define ZANTO_EXPORT __attribute__((visibility("default")))
