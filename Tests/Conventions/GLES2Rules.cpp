#include "Tests/Conventions/GLES2Rules.h"

#include "Tests/Conventions/GLES2Names.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <set>
#include <sstream>
#include <string_view>

namespace {

using Names = std::set<std::string, std::less<>>;
using Findings = std::vector<std::string>;

Names namesIn(std::string_view list) {
    std::istringstream words{std::string(list)};
    Names names;
    for (std::string word; words >> word;)
        names.insert(word);
    return names;
}

/// The rest of a word that begins so, empty for any other.
std::string_view afterPrefix(std::string_view word, std::string_view prefix) {
    return word.starts_with(prefix) ? word.substr(prefix.size()) : std::string_view();
}

/// The name of a function without its "gl", empty for what is none.
std::string_view functionName(std::string_view word) {
    const std::string_view name = afterPrefix(word, "gl");
    return !name.empty() && std::isupper(static_cast<unsigned char>(name.front())) != 0
               ? name
               : std::string_view();
}

bool isIdentifier(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; });
}

/// Null, or an offset into the bound buffer that had to be cast to be taken for an address.
bool isInBuffer(const std::string& pointer) {
    return pointer == "nullptr" || pointer.starts_with("reinterpret_cast<const void*>(");
}

/// What is cast, where a format has to become a GLint.
std::string withoutCast(const std::string& expression) {
    const auto open = expression.find(">(");
    if (!expression.starts_with("static_cast<") || open == std::string::npos)
        return expression;
    return expression.substr(open + 2, expression.size() - open - 3);
}

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool isGLHeader(const std::string& path) {
    const std::string lower = lowerCase(path);
    const auto has = [&](const char* part) { return lower.find(part) != std::string::npos; };
    return lower.starts_with("gl/") || lower.starts_with("gles") || has("opengl") || has("epoxy") ||
           has("glew") || has("glad");
}

} // namespace

Findings unknownGLFunctions(const SourceText& source) {
    static const Names known = namesIn(kGLES2Functions);
    static const Names own = namesIn(kOwnFunctions);
    Findings findings;
    for (const Word& word : source.words()) {
        const std::string_view name = functionName(word.text);
        if (!name.empty() && !source.argumentsOf(word).empty() && !known.contains(name) &&
            !own.contains(name))
            findings.push_back(source.finding(word.line, word.text + " is not in OpenGL ES 2.0"));
    }
    return findings;
}

Findings unknownGLConstants(const SourceText& source) {
    static const Names known = namesIn(kGLES2Constants);
    Findings findings;
    for (const Word& word : source.words()) {
        const std::string_view name = afterPrefix(word.text, "GL_");
        if (!name.empty() && !known.contains(name))
            findings.push_back(source.finding(word.line, word.text + " is not for use here"));
    }
    return findings;
}

Findings unknownGLLookUps(const SourceText& source) {
    static const Names core = namesIn(kGLES2Functions);
    static const Names extension = namesIn(kVertexArrayFunctions);
    Findings findings;
    for (const Literal& literal : source.literals) {
        const std::string_view name = functionName(literal.text);
        if (!name.empty() && isIdentifier(literal.text) && !core.contains(name) &&
            !extension.contains(name))
            findings.push_back(source.finding(literal.line, literal.text + " is looked up"));
    }
    return findings;
}

Findings otherGLHeaders(const SourceText& source) {
    Findings findings;
    for (const Include& include : source.includes) {
        if (include.isAngled && include.path != "GLES2/gl2.h" && isGLHeader(include.path))
            findings.push_back(source.finding(include.line, "<" + include.path + "> is included"));
    }
    return findings;
}

Findings clientSideArrays(const SourceText& source) {
    Findings findings;
    for (const Word& word : source.words()) {
        if (word.text != "glVertexAttribPointer" && word.text != "glDrawElements")
            continue;
        const auto arguments = source.argumentsOf(word);
        if (!arguments.empty() && !isInBuffer(arguments.back()))
            findings.push_back(source.finding(word.line, word.text + " reads from " +
                                                             arguments.back() +
                                                             ", which may be no buffer"));
    }
    return findings;
}

Findings badTextureFormats(const SourceText& source) {
    static const Names formats = namesIn(kTextureFormats);
    Findings findings;
    for (const Word& word : source.words()) {
        if (word.text != "glTexImage2D")
            continue;
        const auto arguments = source.argumentsOf(word);
        if (arguments.size() != 9)
            continue;
        const std::string internal = withoutCast(arguments[2]);
        const std::string_view constant = afterPrefix(internal, "GL_");
        const bool isSized = !constant.empty() && !formats.contains(constant);
        if (isSized || internal != arguments[6])
            findings.push_back(source.finding(word.line, "a texture of " + internal +
                                                             " is filled with " + arguments[6]));
    }
    return findings;
}
