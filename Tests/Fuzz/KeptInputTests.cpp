#include "Fuzz/Targets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMostFiles = 40;
constexpr std::uintmax_t kMostBytes = 2048;

struct Target {
    const char* name;
    const char* folder;
    void (*check)(fuzz::Bytes input);
};

void PrintTo(const Target& target, std::ostream* out) {
    *out << target.folder;
}

/// In order; none where the folder is missing.
std::vector<fs::path> filesIn(const std::string& kind, const Target& target) {
    const fs::path folder = fs::path(ZANTO_SOURCE_DIR) / "Fuzz" / kind / target.folder;
    std::vector<fs::path> files;
    std::error_code missing;
    for (const auto& entry : fs::directory_iterator(folder, missing))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::uint8_t> contentsOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    // Of its own size, so that a sanitizer sees a read beyond it.
    std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), {}};
    bytes.shrink_to_fit();
    return bytes;
}

class KeptInputs : public testing::TestWithParam<Target> {};

} // namespace

TEST_P(KeptInputs, KeepEveryProperty) {
    std::vector<fs::path> files = filesIn("corpus", GetParam());
    ASSERT_FALSE(files.empty());
    const std::vector<fs::path> finds = filesIn("finds", GetParam());
    files.insert(files.end(), finds.begin(), finds.end());
    for (const fs::path& file : files) {
        std::cout << file << std::endl; // what a sanitizer ends at is then the last one
        EXPECT_NO_THROW(GetParam().check(contentsOf(file))) << file;
    }
}

TEST_P(KeptInputs, AreFewAndSmall) {
    const auto files = filesIn("corpus", GetParam());
    EXPECT_LT(files.size(), kMostFiles);
    for (const fs::path& file : files)
        EXPECT_LT(fs::file_size(file), kMostBytes) << file;
}

INSTANTIATE_TEST_SUITE_P(
    EveryTarget, KeptInputs,
    testing::Values(Target{"ActionScript", "action-script", fuzz::checkActionScript},
                    Target{"AttitudeTrace", "attitude-trace", fuzz::checkAttitudeTrace},
                    Target{"HotSpots", "hot-spots", fuzz::checkHotSpots},
                    Target{"Picture", "picture", fuzz::checkPicture},
                    Target{"URL", "url", fuzz::checkURL}),
    [](const auto& target) { return std::string(target.param.name); });
