#pragma once

#include <string>
#include <utility>
#include <variant>

namespace platform {

/// Why an operation that is expected to fail now and then has failed.
enum class ErrorCode {
    Missing,     ///< nothing is there under that name
    Unreadable,  ///< it is there, and the system refuses to hand it over
    Unsupported, ///< a kind or variant that nobody here understands
    Corrupt,     ///< the right kind, cut short or damaged
    TooLarge,    ///< over a limit of the machine or of the host
    Unavailable, ///< the machine lacks what is needed
};

/// A failure: the code for programs, one sentence for people.
struct Error {
    ErrorCode code;
    std::string detail;
};

/// The value of an operation, or the reason why there is none.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] bool ok() const { return state_.index() == 0; }
    explicit operator bool() const { return ok(); }

    /// Only while `ok()`.
    [[nodiscard]] T& value() & { return std::get<0>(state_); }
    [[nodiscard]] const T& value() const& { return std::get<0>(state_); }
    [[nodiscard]] T&& value() && { return std::get<0>(std::move(state_)); }

    /// Only while not `ok()`.
    [[nodiscard]] const Error& error() const { return std::get<1>(state_); }

private:
    std::variant<T, Error> state_;
};

} // namespace platform
