#pragma once

#include <string>

/// Where the installed resources stand: as far from the file that holds this code as it was when
/// both were installed, so that the tree can be moved. Empty when that file is not known.
[[nodiscard]] std::string installedResourceFolder();
