#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Why text that a user wrote is invalid. The readers throw and catch it; it does not leave them.
class LineRefused : public std::runtime_error {
public:
    /// `why` may quote the text: control characters are replaced by question marks, because a
    /// terminal would interpret them.
    explicit LineRefused(std::string why);
};

/// Parses JSON.
///
/// Errors: the parser's own exceptions; `LineRefused` if lists and objects are nested deeper than
///         any valid input, because copying them could overflow the stack.
[[nodiscard]] nlohmann::json parsedJson(const std::string& text);

/// A JSON object that a user wrote, with typed access to its members.
///
/// Errors: every reading function throws `LineRefused`, which names the member.
class Members {
public:
    /// `place` locates the object within the input, as in "list[3]"; empty for the root object.
    explicit Members(nlohmann::json object, std::string place = {});

    [[nodiscard]] const nlohmann::json& object() const { return object_; }
    [[nodiscard]] bool has(const std::string& name) const { return object_.contains(name); }

    /// A finite number.
    [[nodiscard]] double number(const std::string& name) const;
    /// An integer below 2^53 in magnitude, so that every program reads it exactly.
    [[nodiscard]] std::int64_t integer(const std::string& name) const;
    [[nodiscard]] std::string text(const std::string& name) const;
    [[nodiscard]] bool flag(const std::string& name) const;
    /// A list of `count` finite numbers; `shape` describes it in messages, as in "[width, height]".
    [[nodiscard]] std::vector<double> numbers(const std::string& name, std::size_t count,
                                              std::string_view shape) const;
    /// A list of any number of objects.
    [[nodiscard]] std::vector<Members> objects(const std::string& name) const;

    /// Throws `LineRefused` if there is a member with another name.
    void allowOnly(std::initializer_list<std::string_view> names) const;
    /// The name of a member in messages.
    [[nodiscard]] std::string nameOf(const std::string& name) const;

private:
    [[nodiscard]] const nlohmann::json& member(const std::string& name) const;

    nlohmann::json object_;
    std::string place_;
};
