#pragma once

#include "Platform/Foundation/Export.h"

#include <stdexcept>
#include <string>

namespace platform {

/// An invalid set-up: a programming error or missing resources, never invalid content.
///
/// No other exception leaves the library.
class ZANTO_EXPORT AssertionFailure : public std::logic_error {
public:
    AssertionFailure(std::string file, int line, std::string description);

    /// The name of the source file, without folder and extension.
    [[nodiscard]] const std::string& file() const { return file_; }
    [[nodiscard]] int line() const { return line_; }
    [[nodiscard]] const std::string& description() const { return description_; }

private:
    std::string file_;
    int line_;
    std::string description_;
};

/// Logs the failure as an error and throws `AssertionFailure`.
[[noreturn]] ZANTO_EXPORT void failAssertion(std::string file, int line, std::string description);

} // namespace platform
