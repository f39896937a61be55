#pragma once

#include "Platform/Foundation/Bundle.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <string>

/// Puts a file in front of the framework's own resources while it lives.
class ShadowedResource {
public:
    ShadowedResource(const std::string& name, const std::string& content) {
        std::ofstream(folder_.pathOf(name)) << content;
        platform::Bundle::framework().addFolder(folder_.path());
    }
    /// A folder of that name, which cannot be read as a file.
    explicit ShadowedResource(const std::string& name) {
        std::filesystem::create_directory(folder_.pathOf(name));
        platform::Bundle::framework().addFolder(folder_.path());
    }
    ~ShadowedResource() { platform::Bundle::framework().removeFolder(folder_.path()); }
    ShadowedResource(const ShadowedResource&) = delete;
    ShadowedResource& operator=(const ShadowedResource&) = delete;

private:
    tests::TemporaryFolder folder_;
};
