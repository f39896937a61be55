#include "Apps/Player/Window/AttitudeTraceFile.h"

#include <filesystem>
#include <fstream>
#include <iterator>

using platform::AttitudeTrace;
using platform::Error;
using platform::ErrorCode;

platform::Result<AttitudeTrace> readAttitudeTraceFile(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        return Error{ErrorCode::Missing, path + ": there is no such file"};
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path, ignored))
        return Error{ErrorCode::Unreadable, path + ": cannot be read"};
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    auto trace = AttitudeTrace::read(text, path);
    if (trace && trace.value().samples().empty())
        return Error{ErrorCode::Corrupt, path + ": there is no attitude in it"};
    return trace;
}
