#pragma once

#include <cstdint>

namespace fuzz {

/// While one lives, every new array begins full of one byte: what nobody has written then differs
/// from one byte to another. Programs that link this have array forms of `new` of their own.
///
/// Thread: main, one at a time.
class FilledMemory {
public:
    explicit FilledMemory(std::uint8_t byte);
    ~FilledMemory();
    FilledMemory(const FilledMemory&) = delete;
    FilledMemory& operator=(const FilledMemory&) = delete;
};

} // namespace fuzz
