#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A string literal's content; lines count from 1.
struct Literal {
    int line;
    std::string text;
};

/// An included file; `isAngled` for <…>.
struct Include {
    int line;
    std::string path;
    bool isAngled;
};

/// A name or a number in the code, from `begin` to before `end`.
struct Word {
    int line;
    std::string text;
    std::size_t begin;
    std::size_t end;
};

/// A source file taken apart.
struct SourceText {
    SourceText(std::string path, std::string_view text);

    [[nodiscard]] bool isHeader() const { return path.ends_with(".h"); }
    [[nodiscard]] std::vector<Word> words() const;
    /// The arguments of the call of a word, without outer blanks; none where no bracket follows it.
    [[nodiscard]] std::vector<std::string> argumentsOf(const Word& word) const;
    /// "path:line: what", as compilers write it.
    [[nodiscard]] std::string finding(int line, std::string_view what) const;

    std::string path;
    /// The text with blanks for comments and for what literals hold.
    std::string code;
    std::vector<Literal> literals;
    std::vector<Include> includes;
};

/// The sources in some folders of the repository, by their path in it.
[[nodiscard]] std::vector<SourceText> sourcesIn(const std::vector<std::string>& folders);
