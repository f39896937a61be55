#include "Resources/InstalledFolder.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace {

// Any object of this file tells in which library or program it ended up.
const char kHere = 0;

} // namespace

std::string installedResourceFolder() {
    Dl_info info{};
    if (dladdr(&kHere, &info) == 0 || info.dli_fname == nullptr)
        return {};
    std::error_code error;
    // Absolute, because a program may change its folder later; links are followed, because the
    // resources stand beside the file itself.
    const auto file = std::filesystem::canonical(info.dli_fname, error);
    if (error)
        return {};
    return (file.parent_path() / ZANTO_RESOURCES_FROM_LIBRARY).lexically_normal().string();
}
