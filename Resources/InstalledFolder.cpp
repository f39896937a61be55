#include "Resources/InstalledFolder.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace {

// The address of this object identifies the library or program that contains it.
const char kHere = 0;

} // namespace

std::string installedResourceFolder() {
    Dl_info info{};
    if (dladdr(&kHere, &info) == 0 || info.dli_fname == nullptr)
        return {};
    std::error_code error;
    // The path is canonical: absolute, because the program may change its current folder later, and
    // with links followed, because the resources lie relative to the file itself.
    const auto file = std::filesystem::canonical(info.dli_fname, error);
    if (error)
        return {};
    return (file.parent_path() / ZANTO_RESOURCES_FROM_LIBRARY).lexically_normal().string();
}
