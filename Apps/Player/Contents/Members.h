#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Why a text that people write is not what it should be. Stays among its readers.
class LineRefused : public std::runtime_error {
public:
    /// `why` may quote the text: what a terminal would act on is replaced by question marks.
    explicit LineRefused(std::string why);
};

/// The JSON of a text.
///
/// Errors: the parser's own exceptions; `LineRefused` where lists and objects are nested deeper
/// than
///         anything that is read, because copying them could overflow the stack.
[[nodiscard]] nlohmann::json parsedJson(const std::string& text);

/// A JSON object that people write: its members, each of the type that it should have.
///
/// Errors: `LineRefused` from every function that reads, naming the member.
class Members {
public:
    /// `place`: where the object stands, as in "list[3]"; empty for an object of its own.
    explicit Members(nlohmann::json object, std::string place = {});

    [[nodiscard]] const nlohmann::json& object() const { return object_; }
    [[nodiscard]] bool has(const std::string& name) const { return object_.contains(name); }

    /// Finite.
    [[nodiscard]] double number(const std::string& name) const;
    /// Small enough to be told apart from its neighbours by whatever program wrote it.
    [[nodiscard]] std::int64_t integer(const std::string& name) const;
    [[nodiscard]] std::string text(const std::string& name) const;
    [[nodiscard]] bool flag(const std::string& name) const;
    /// So many finite numbers; `shape` says what they are, as in "[width, height]".
    [[nodiscard]] std::vector<double> numbers(const std::string& name, std::size_t count,
                                              std::string_view shape) const;
    /// Any number of objects, each knowing its place.
    [[nodiscard]] std::vector<Members> objects(const std::string& name) const;

    /// Refuses a member that is not among these.
    void allowOnly(std::initializer_list<std::string_view> names) const;
    /// How messages call a member.
    [[nodiscard]] std::string nameOf(const std::string& name) const;

private:
    [[nodiscard]] const nlohmann::json& member(const std::string& name) const;

    nlohmann::json object_;
    std::string place_;
};
