#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Why a line of an action script is no action. Stays among its readers.
class LineRefused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A line of an action script: its members, each of the type that it should have.
///
/// Errors: `LineRefused` from every function that reads, naming the member.
class ActionLine {
public:
    /// `number`: of the line in its file.
    ActionLine(const std::string& text, int number);

    [[nodiscard]] const nlohmann::json& members() const { return object_; }
    [[nodiscard]] bool has(const std::string& name) const { return object_.contains(name); }

    /// The second that the line stands for.
    [[nodiscard]] double at() const;
    /// Finite.
    [[nodiscard]] double number(const std::string& name) const;
    /// Small enough to be told apart from its neighbours by whatever program wrote it.
    [[nodiscard]] std::int64_t integer(const std::string& name) const;
    [[nodiscard]] std::string text(const std::string& name) const;
    [[nodiscard]] bool flag(const std::string& name) const;
    /// So many finite numbers; `shape` says what they are, as in "[width, height]".
    [[nodiscard]] std::vector<double> numbers(const std::string& name, std::size_t count,
                                              std::string_view shape) const;

    /// The id of a finger that the line needs for itself: no `integer()` and no other line's.
    [[nodiscard]] std::int64_t ownTouchId(int finger) const;

private:
    [[nodiscard]] const nlohmann::json& member(const std::string& name) const;

    nlohmann::json object_;
    int number_;
};
