#include "Platform/Foundation/Bundle.h"

#include "Platform/Foundation/Base64.h"
#include "Platform/Foundation/Environment.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace platform {
namespace {

std::optional<std::vector<std::uint8_t>> readFile(const std::filesystem::path& path) {
    std::error_code ignored;
    std::ifstream file(path, std::ios::binary);
    // Opening a folder succeeds; only reading from it fails.
    if (!file || !std::filesystem::is_regular_file(path, ignored))
        return std::nullopt;
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(file), {});
}

std::optional<std::filesystem::path> pathIn(const std::string& folder, std::string_view fileName) {
    auto path = std::filesystem::path(folder) / fileName;
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        return std::nullopt;
    return path;
}

} // namespace

Bundle::Bundle(std::vector<EmbeddedResource> embedded, std::string installedFolder)
    : embedded_(std::move(embedded)), installedFolder_(std::move(installedFolder)) {}

void Bundle::addFolder(std::string path) {
    folders_.push_back(std::move(path));
}

void Bundle::removeFolder(std::string_view path) {
    std::erase_if(folders_, [&](const std::string& folder) { return folder == path; });
}

Bundle& Bundle::application() {
    return Environment::current().part<Bundle>();
}

std::optional<std::vector<std::uint8_t>> Bundle::data(std::string_view name,
                                                      std::string_view type) const {
    return data(std::string(name) + "." + std::string(type));
}

std::optional<std::vector<std::uint8_t>> Bundle::data(std::string_view fileName) const {
    for (const std::string& folder : folders_) {
        if (const auto path = pathIn(folder, fileName))
            return readFile(*path);
    }
    if (const auto path =
            installedFolder_.empty() ? std::nullopt : pathIn(installedFolder_, fileName))
        return readFile(*path);
    for (const EmbeddedResource& resource : embedded_) {
        if (resource.name == fileName)
            return decodeBase64(resource.base64);
    }
    return std::nullopt;
}

std::optional<std::string> Bundle::string(std::string_view name, std::string_view type) const {
    const auto bytes = data(name, type);
    if (!bytes)
        return std::nullopt;
    return std::string(bytes->begin(), bytes->end());
}

} // namespace platform
