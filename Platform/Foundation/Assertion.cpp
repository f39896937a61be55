#include "Platform/Foundation/Assertion.h"

#include "Platform/Foundation/Log.h"

#include <utility>

namespace platform {

AssertionFailure::AssertionFailure(std::string file, int line, std::string description)
    : std::logic_error(file + ":" + std::to_string(line) + ": " + description),
      file_(std::move(file)), line_(line), description_(std::move(description)) {}

void failAssertion(std::string file, int line, std::string description) {
    AssertionFailure failure(std::move(file), line, std::move(description));
    log(LogLevel::Error, failure.what());
    throw AssertionFailure(failure);
}

} // namespace platform
