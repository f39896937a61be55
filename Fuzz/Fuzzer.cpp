#include "Fuzz/Targets.h"

#include <cstddef>
#include <cstdint>

/// The entry point that libFuzzer calls with each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::ZANTO_FUZZED({data, size});
    return 0;
}
