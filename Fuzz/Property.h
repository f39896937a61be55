#pragma once

#include "Platform/Foundation/Result.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace fuzz {

/// An input has shown something that should never be. A fuzzer ends at it, a test reports it.
class PropertyBroken : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

/// Throws `PropertyBroken` unless `holds`; `property` is a sentence that should be true.
void require(bool holds, std::string_view property);

/// What every refusal is: a sentence of one line that begins with `subject`, and nothing that a
/// terminal would act on.
void requireReadable(const platform::Error& error, std::string_view subject);

} // namespace fuzz
