#pragma once

#include <cstdint>

namespace fuzz {

/// While an instance exists, every new array is filled with one byte, so that two runs with
/// different bytes reveal uninitialised memory. Programs that link this file get replaced array
/// forms of `new`.
///
/// Thread: main. Only one instance may exist at a time.
class FilledMemory {
public:
    explicit FilledMemory(std::uint8_t byte);
    ~FilledMemory();
    FilledMemory(const FilledMemory&) = delete;
    FilledMemory& operator=(const FilledMemory&) = delete;
};

} // namespace fuzz
