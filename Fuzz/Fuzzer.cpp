#include "Fuzz/Targets.h"

#include <cstddef>
#include <cstdint>

/// What libFuzzer calls with input after input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::ZANTO_FUZZED({data, size});
    return 0;
}
