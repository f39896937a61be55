#pragma once

#include <string>

/// The folder of the installed resources, found relative to the file that contains this code, so
/// that the installed tree can be moved. Empty if that file is unknown.
[[nodiscard]] std::string installedResourceFolder();
