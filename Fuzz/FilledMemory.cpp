#include "Fuzz/FilledMemory.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

constexpr int kUnfilled = -1;
std::atomic<int> fillByte{kUnfilled};

} // namespace

void* operator new[](std::size_t size) {
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (!memory)
        throw std::bad_alloc();
    if (const int byte = fillByte; byte != kUnfilled)
        std::memset(memory, byte, size);
    return memory;
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace fuzz {

FilledMemory::FilledMemory(std::uint8_t byte) {
    fillByte = byte;
}

FilledMemory::~FilledMemory() {
    fillByte = kUnfilled;
}

} // namespace fuzz
