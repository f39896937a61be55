#include "Tests/Conventions/SourceText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

using testing::IsEmpty;
using testing::SizeIs;

namespace {

using Paths = std::vector<std::string>;

/// The standard's headers have neither a folder nor an ending.
bool isStandard(const std::string& path) {
    return path.find_first_of("/.") == std::string::npos;
}

bool isOneOf(const Paths& paths, const std::string& path) {
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

bool startsWithOneOf(const Paths& folders, const std::string& path) {
    return std::any_of(folders.begin(), folders.end(),
                       [&](const std::string& folder) { return path.starts_with(folder); });
}

/// The includes that `mayInclude` refuses, of the sources that `counts` picks.
std::vector<std::string> refusedIncludes(const SourceText& source,
                                         bool (*mayInclude)(const Include&)) {
    std::vector<std::string> findings;
    for (const Include& include : source.includes) {
        if (!mayInclude(include))
            findings.push_back(source.finding(include.line, include.path + " is included"));
    }
    return findings;
}

std::vector<std::string> refusedIncludesIn(const std::string& folder,
                                           bool (*mayInclude)(const Include&),
                                           bool onlyHeaders = false) {
    std::vector<std::string> all;
    for (const SourceText& source : sourcesIn({folder})) {
        if (onlyHeaders && !source.isHeader())
            continue;
        const auto found = refusedIncludes(source, mayInclude);
        all.insert(all.end(), found.begin(), found.end());
    }
    return all;
}

bool viewerMayInclude(const Include& include) {
    if (!include.isAngled)
        return startsWithOneOf({"HVViewer/", "Platform/"}, include.path);
    return isStandard(include.path) || include.path == "GLES2/gl2.h";
}

bool platformMayInclude(const Include& include) {
    if (!include.isAngled)
        return startsWithOneOf({"Platform/"}, include.path);
    // The compiler's own header, for the names of classes, is no library.
    return isStandard(include.path) || isOneOf({"GLES2/gl2.h", "cxxabi.h"}, include.path) ||
           include.path.starts_with("glm/");
}

/// A browser has no threads and no files; a header that shows them would bring them to every user.
bool platformHeaderMayInclude(const Include& include) {
    if (!include.isAngled)
        return startsWithOneOf({"Platform/"}, include.path);
    return isStandard(include.path) && !isOneOf({"thread", "filesystem", "fstream"}, include.path);
}

/// Where a source that has a header of its name includes another one before it.
std::vector<std::string> lateOwnHeaders(const std::vector<SourceText>& sources) {
    std::vector<std::string> findings;
    for (const SourceText& source : sources) {
        const std::string header = source.path.substr(0, source.path.rfind('.')) + ".h";
        const bool hasHeader = !source.isHeader() && std::any_of(sources.begin(), sources.end(),
                                                                 [&](const SourceText& other) {
                                                                     return other.path == header;
                                                                 });
        if (hasHeader && (source.includes.empty() || source.includes.front().path != header))
            findings.push_back(source.finding(1, header + " is not its first include"));
    }
    return findings;
}

SourceText text(std::string_view code) {
    return {"File.h", code};
}

} // namespace

TEST(Includes, OfTheViewerAreThePlatformsTheStandardsAndGLs) {
    EXPECT_THAT(refusedIncludesIn("HVViewer", viewerMayInclude), IsEmpty());
}

TEST(Includes, OfThePlatformAreItsOwnTheStandardsGLsAndTheMaths) {
    EXPECT_THAT(refusedIncludesIn("Platform", platformMayInclude), IsEmpty());
}

TEST(Includes, OfPlatformHeadersShowNoThreadFileOrLibrary) {
    EXPECT_THAT(refusedIncludesIn("Platform", platformHeaderMayInclude, true), IsEmpty());
}

TEST(Includes, OfASourceBeginWithItsOwnHeader) {
    EXPECT_THAT(lateOwnHeaders(sourcesIn({"HVViewer", "Platform", "Backends", "Hosts", "Apps"})),
                IsEmpty());
}

TEST(IncludeRule, RefusesAnIncludeBeforeTheOwnHeader) {
    const SourceText header("A/B.h", "");
    EXPECT_THAT(lateOwnHeaders({header, {"A/B.cpp", "#include <map>\n#include \"A/B.h\"\n"}}),
                SizeIs(1));
    EXPECT_THAT(lateOwnHeaders({header, {"A/B.cpp", ""}}), SizeIs(1));
    EXPECT_THAT(lateOwnHeaders({header, {"A/B.cpp", "#include \"A/B.h\"\n#include <map>\n"}}),
                IsEmpty());
    EXPECT_THAT(lateOwnHeaders({header, {"A/C.cpp", "#include <map>\n"}}), IsEmpty());
}

TEST(IncludeRule, RefusesHostsBackendsAndLibrariesToTheViewer) {
    EXPECT_THAT(refusedIncludes(text("#include \"Hosts/A.h\"\n#include \"Backends/B.h\"\n"
                                     "#include \"C.h\"\n#include <glm/glm.hpp>\n"
                                     "#include <EGL/egl.h>\n#include <math.h>\n"),
                                viewerMayInclude),
                SizeIs(6));
    EXPECT_THAT(refusedIncludes(text("#include \"HVViewer/A.h\"\n#include \"Platform/B.h\"\n"
                                     "#include <GLES2/gl2.h>\n  #  include <string_view>\n"),
                                viewerMayInclude),
                IsEmpty());
}

TEST(IncludeRule, RefusesTheViewerHostsBackendsAndLibrariesToThePlatform) {
    EXPECT_THAT(refusedIncludes(text("#include \"HVViewer/A.h\"\n#include \"Hosts/A.h\"\n"
                                     "#include \"Backends/B.h\"\n#include <png.h>\n"
                                     "#include <SDL.h>\n"),
                                platformMayInclude),
                SizeIs(5));
    EXPECT_THAT(refusedIncludes(text("#include <glm/vec3.hpp>\n"), platformMayInclude), IsEmpty());
}

TEST(IncludeRule, RefusesThreadsFilesAndLibrariesToPlatformHeaders) {
    EXPECT_THAT(refusedIncludes(text("#include <thread>\n#include <filesystem>\n"
                                     "#include <fstream>\n#include <glm/vec3.hpp>\n"
                                     "#include <GLES2/gl2.h>\n#include <cxxabi.h>\n"),
                                platformHeaderMayInclude),
                SizeIs(6));
}

TEST(SourceText, TellsCodeFromCommentsAndLiterals) {
    const SourceText source("a.cpp", "a /* b\n c */ d // e\n\"f\\\"g\" 'h' 1'000 R\"x(i\"j)x\" k");
    EXPECT_EQ(source.code, "a     \n      d     \n           1'000            k");
    ASSERT_THAT(source.literals, SizeIs(2));
    EXPECT_EQ(source.literals[0].text, "f\\\"g");
    EXPECT_EQ(source.literals[0].line, 3);
    EXPECT_EQ(source.literals[1].text, "i\"j");
}

TEST(SourceText, FindsIncludesWithTheirLines) {
    const SourceText source("a.h",
                            "#pragma once\n\n#include <map> // why\n/*\n#include <set>\n*/\n");
    ASSERT_THAT(source.includes, SizeIs(1));
    EXPECT_EQ(source.includes[0].line, 3);
    EXPECT_EQ(source.includes[0].path, "map");
}

TEST(Sources, AreFound) {
    for (const char* folder : {"HVViewer", "Platform", "Backends", "Hosts"})
        EXPECT_FALSE(sourcesIn({folder}).empty()) << folder;
}
