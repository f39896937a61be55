#pragma once

#include <string>
#include <utility>
#include <variant>

namespace platform {

/// The cause of a failure that is expected to occur in normal operation.
enum class ErrorCode {
    Missing,     ///< nothing exists under that name
    Unreadable,  ///< it exists, but the system refuses access
    Unsupported, ///< a kind or variant that this build does not support
    Corrupt,     ///< the right kind, but truncated or damaged
    TooLarge,    ///< over a limit of the machine or of the host
    Unavailable, ///< the machine lacks something that is required
};

/// A failure: a code for programs, and one sentence for the user.
struct Error {
    ErrorCode code;
    std::string detail;
};

/// The value of an operation, or the reason why it has failed.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] bool ok() const { return state_.index() == 0; }
    explicit operator bool() const { return ok(); }

    /// Precondition: `ok()`.
    [[nodiscard]] T& value() & { return std::get<0>(state_); }
    [[nodiscard]] const T& value() const& { return std::get<0>(state_); }
    [[nodiscard]] T&& value() && { return std::get<0>(std::move(state_)); }

    /// Precondition: not `ok()`.
    [[nodiscard]] const Error& error() const { return std::get<1>(state_); }

private:
    std::variant<T, Error> state_;
};

} // namespace platform
