#pragma once

/// Marks a symbol that the shared libraries export; all other symbols are hidden.
///
/// It is set on every class that has a function in a source file or that users may derive from,
/// catch or cast to, and on every free function and constant of a public header. Some classes whose
/// headers are not installed have it because the hosts and the program use them.
#define ZANTO_EXPORT __attribute__((visibility("default")))
