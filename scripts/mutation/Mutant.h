// What a rewritten source calls in each place that has a mutant. One mutant at most is switched on,
// by its number in ZANTO_MUTANT; ZANTO_MUTANT_REACHED names a file of one byte a mutant, in which
// every mutant that is passed leaves a 1.
#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <type_traits>
#include <utility>

namespace zmutant {

inline int activeNumber() {
    static const int number = [] {
        const char* text = std::getenv("ZANTO_MUTANT");
        return text == nullptr ? -1 : std::atoi(text);
    }();
    return number;
}

inline unsigned char* reachedBytes() {
    static unsigned char* const bytes = []() -> unsigned char* {
        const char* path = std::getenv("ZANTO_MUTANT_REACHED");
        const int file = path == nullptr ? -1 : ::open(path, O_RDWR | O_CLOEXEC);
        struct stat facts {};
        if (file < 0 || ::fstat(file, &facts) != 0)
            return nullptr;
        void* memory = ::mmap(nullptr, static_cast<std::size_t>(facts.st_size),
                              PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        ::close(file);
        return memory == MAP_FAILED ? nullptr : static_cast<unsigned char*>(memory);
    }();
    return bytes;
}

inline bool passes(int number) {
    if (unsigned char* bytes = reachedBytes())
        __atomic_store_n(bytes + number, static_cast<unsigned char>(1), __ATOMIC_RELAXED);
    return number == activeNumber();
}

/// A constant expression is never a mutant: the compiler has no environment.
constexpr bool isOn(int number) {
    return !std::is_constant_evaluated() && passes(number);
}

constexpr bool keep(int number) {
    return !isOn(number);
}

template <class Condition>
constexpr bool negate(int number, Condition&& condition) {
    return static_cast<bool>(std::forward<Condition>(condition)) != isOn(number);
}

template <class Left, class Right>
constexpr bool less(int number, const Left& left, const Right& right) {
    return isOn(number) ? left <= right : left < right;
}

template <class Left, class Right>
constexpr bool lessOrEqual(int number, const Left& left, const Right& right) {
    return isOn(number) ? left < right : left <= right;
}

template <class Left, class Right>
constexpr bool greater(int number, const Left& left, const Right& right) {
    return isOn(number) ? left >= right : left > right;
}

template <class Left, class Right>
constexpr bool greaterOrEqual(int number, const Left& left, const Right& right) {
    return isOn(number) ? left > right : left >= right;
}

template <class Value>
constexpr Value constant(int number, Value value) {
    if (!isOn(number))
        return value;
    if constexpr (std::is_same_v<Value, bool>)
        return !value;
    else if constexpr (std::is_integral_v<Value>)
        return static_cast<Value>(value + 1);
    else if constexpr (std::is_floating_point_v<Value>)
        return value == Value{} ? Value(1) : static_cast<Value>(value * Value(1.25));
    else
        return value + value; // a length of time
}

/// Runs the calls in their order; mutant `first + i` exchanges call i and the next.
template <class... Calls>
void inOrder(int first, Calls&&... calls) {
    constexpr int count = static_cast<int>(sizeof...(Calls));
    const auto run = [&](int wanted) {
        int index = 0;
        ((index++ == wanted ? calls() : void()), ...);
    };
    for (int i = 0; i < count; ++i) {
        if (i + 1 < count && isOn(first + i)) {
            run(i + 1);
            run(i);
            ++i;
        } else {
            run(i);
        }
    }
}

} // namespace zmutant
