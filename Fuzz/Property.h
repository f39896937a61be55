#pragma once

#include "Platform/Foundation/Result.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace fuzz {

/// An input has violated a property. A fuzzer stops at it; a test reports it.
class PropertyBroken : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

/// Throws `PropertyBroken` unless `holds`; `property` is a sentence that should be true.
void require(bool holds, std::string_view property);

/// Requires that an error is readable: a one-line sentence that begins with `subject` and contains
/// no control characters.
void requireReadable(const platform::Error& error, std::string_view subject);

} // namespace fuzz
