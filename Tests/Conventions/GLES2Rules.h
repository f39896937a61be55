#pragma once

#include "Tests/Conventions/SourceText.h"

#include <string>
#include <vector>

// What a source may use of GL, so that it runs on a browser's first WebGL as well: the core of
// OpenGL ES 2.0, buffers instead of the application's own arrays, textures without sized formats
// and without repeating. Each gives the places that break its rule.

[[nodiscard]] std::vector<std::string> unknownGLFunctions(const SourceText& source);
[[nodiscard]] std::vector<std::string> unknownGLConstants(const SourceText& source);
/// Function names in literals, as they are looked up.
[[nodiscard]] std::vector<std::string> unknownGLLookUps(const SourceText& source);
[[nodiscard]] std::vector<std::string> otherGLHeaders(const SourceText& source);
/// Vertices or indices that are not read from a buffer.
[[nodiscard]] std::vector<std::string> clientSideArrays(const SourceText& source);
[[nodiscard]] std::vector<std::string> badTextureFormats(const SourceText& source);
