#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tests {

TemporaryFolder::TemporaryFolder() : path_(::testing::TempDir() + "zanto-XXXXXX") {
    if (::mkdtemp(path_.data()) == nullptr)
        throw std::runtime_error("cannot make " + path_);
    // Also for a user that a test becomes.
    std::filesystem::permissions(path_, std::filesystem::perms::others_exec,
                                 std::filesystem::perm_options::add);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::add(const std::string& name,
                                 std::span<const std::uint8_t> contents) const {
    const std::string path = pathOf(name);
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(contents.data()),
               static_cast<std::streamsize>(contents.size()));
    if (!file.flush())
        throw std::runtime_error("cannot write " + path);
    return path;
}

std::string TemporaryFolder::addText(const std::string& name, std::string_view text) const {
    return add(name, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

std::string TemporaryFolder::read(const std::string& name) const {
    std::ifstream file(pathOf(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace tests
