#include "Tests/Conventions/SourceText.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <utility>

namespace {

bool isWord(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

/// Walks a text once, telling code from comments and literals.
class Lexer {
public:
    explicit Lexer(std::string_view text) : text_(text) {}

    void run() {
        while (at_ < text_.size()) {
            if (startsWith("//"))
                blankUntil("\n");
            else if (startsWith("/*"))
                blankUntil("*/");
            else if (startsWith("R\"") && (at_ == 0 || !isWord(text_[at_ - 1])))
                rawString();
            else if (text_[at_] == '"')
                string('"');
            else if (text_[at_] == '\'' && (at_ == 0 || !isWord(text_[at_ - 1])))
                string('\''); // else it separates digits
            else
                code.push_back(text_[at_++]);
        }
    }

    std::string code;
    std::vector<Literal> literals;

private:
    [[nodiscard]] bool startsWith(std::string_view token) const {
        return text_.substr(at_).starts_with(token);
    }
    void blank(std::size_t count) {
        for (; count > 0 && at_ < text_.size(); --count) {
            const char c = text_[at_++];
            code.push_back(c == '\n' ? '\n' : ' ');
        }
    }
    void blankUntil(std::string_view end) {
        const auto found = text_.find(end, at_ + 2);
        blank(found == std::string_view::npos ? text_.size() : found + end.size() - at_);
    }
    void keepLiteral(std::size_t from, std::size_t length) {
        const auto line =
            1 + std::count(text_.begin(), text_.begin() + static_cast<long>(at_), '\n');
        literals.push_back({static_cast<int>(line), std::string(text_.substr(from, length))});
    }
    void string(char quote) {
        std::size_t end = at_ + 1;
        while (end < text_.size() && text_[end] != quote)
            end += text_[end] == '\\' ? 2U : 1U;
        if (quote == '"')
            keepLiteral(at_ + 1, end - at_ - 1);
        blank(end + 1 - at_);
    }
    void rawString() {
        const auto open = text_.find('(', at_);
        const std::string close = ")" + std::string(text_.substr(at_ + 2, open - at_ - 2)) + "\"";
        const auto end = text_.find(close, open);
        keepLiteral(open + 1, end - open - 1);
        blank(end + close.size() - at_);
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

bool isBlank(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Takes `token` off the front, and blanks before it. Whether it was there.
bool take(std::string_view& text, std::string_view token) {
    text = trimmed(text);
    if (!text.starts_with(token))
        return false;
    text.remove_prefix(token.size());
    return true;
}

std::vector<Include> includesOf(std::string_view text, const std::string& code) {
    std::vector<Include> includes;
    std::istringstream lines{std::string(text)};
    std::istringstream codeLines(code);
    std::string codeLine;
    int number = 0;
    for (std::string line; std::getline(lines, line) && std::getline(codeLines, codeLine);) {
        ++number;
        std::string_view rest = line;
        // A directive inside a comment has no number sign in the code.
        if (!trimmed(codeLine).starts_with('#') || !take(rest, "#") || !take(rest, "include"))
            continue;
        const bool isAngled = take(rest, "<");
        if (isAngled || take(rest, "\""))
            includes.push_back(
                {number, std::string(rest.substr(0, rest.find_first_of(">\""))), isAngled});
    }
    return includes;
}

} // namespace

SourceText::SourceText(std::string pathInRepository, std::string_view text)
    : path(std::move(pathInRepository)) {
    Lexer lexer(text);
    lexer.run();
    code = std::move(lexer.code);
    literals = std::move(lexer.literals);
    includes = includesOf(text, code);
}

std::vector<Word> SourceText::words() const {
    std::vector<Word> words;
    int line = 1;
    for (std::size_t i = 0; i < code.size(); ++i) {
        if (code[i] == '\n')
            ++line;
        if (!isWord(code[i]))
            continue;
        const std::size_t begin = i;
        while (i + 1 < code.size() && isWord(code[i + 1]))
            ++i;
        words.push_back({line, code.substr(begin, i + 1 - begin), begin, i + 1});
    }
    return words;
}

std::vector<std::string> SourceText::argumentsOf(const Word& word) const {
    std::size_t begin = word.end;
    while (begin < code.size() && isBlank(code[begin]))
        ++begin;
    std::vector<std::string> arguments;
    if (begin == code.size() || code[begin] != '(')
        return arguments;
    int depth = 1;
    for (std::size_t i = ++begin; i < code.size() && depth > 0; ++i) {
        const char c = code[i];
        if (c == '(' || c == '[' || c == '{')
            ++depth;
        if (c == ')' || c == ']' || c == '}')
            --depth;
        if (depth > 1 || (depth == 1 && c != ','))
            continue;
        arguments.emplace_back(trimmed(std::string_view(code).substr(begin, i - begin)));
        begin = i + 1;
    }
    return arguments;
}

std::string SourceText::finding(int line, std::string_view what) const {
    return path + ":" + std::to_string(line) + ": " + std::string(what);
}

std::vector<SourceText> sourcesIn(const std::vector<std::string>& folders) {
    const std::filesystem::path root = ZANTO_SOURCE_DIR;
    std::vector<SourceText> sources;
    for (const std::string& folder : folders) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
            const auto extension = entry.path().extension();
            if (extension != ".h" && extension != ".cpp" && extension != ".c")
                continue;
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string text(std::istreambuf_iterator<char>(file), {});
            sources.emplace_back(entry.path().lexically_relative(root).string(), text);
        }
    }
    return sources;
}
