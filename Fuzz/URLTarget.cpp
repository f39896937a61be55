#include "Fuzz/Property.h"
#include "Fuzz/Targets.h"
#include "Platform/Foundation/URL.h"

#include <algorithm>
#include <string>

namespace fuzz {
namespace {

using platform::URL;

bool isLowerScheme(const std::string& scheme) {
    return !scheme.empty() && std::all_of(scheme.begin(), scheme.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
    });
}

void checkAddress(const std::string& text) {
    const auto url = URL::URLWithString(text);
    if (!url)
        return;
    require(url->absoluteString() == text, "an address keeps its text");
    require(URL::URLWithString(url->absoluteString()) == url, "its text gives it again");
    require(isLowerScheme(url->scheme()), "a scheme is of its characters, in lower case");
    require(text.size() > url->scheme().size() && text[url->scheme().size()] == ':',
            "a scheme ends at a colon");
    require(url->isFileURL() == (url->scheme() == "file"), "the scheme tells a file");
    require(url->path().size() < text.size() - url->scheme().size(),
            "a path is shorter than what it is taken from");
}

void checkFile(const std::string& path) {
    const URL url = URL::fileURLWithPath(path);
    require(url.isFileURL(), "a path gives a file's address");
    require(URL::URLWithString(url.absoluteString()) == url, "a file's address is an address");
    require(URL::fileURLWithPath(url.path()) == url, "the path of a file's address gives it again");
}

} // namespace

void checkURL(Bytes input) {
    const std::string text(input.begin(), input.end());
    checkAddress(text);
    checkFile(text);
}

} // namespace fuzz
