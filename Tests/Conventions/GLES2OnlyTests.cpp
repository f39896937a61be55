#include "Tests/Conventions/GLES2Rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

using Findings = std::vector<std::string>;

/// What a rule finds in all that is linked into a player.
Findings findingsInSources(Findings (*rule)(const SourceText&)) {
    Findings all;
    for (const SourceText& source : sourcesIn({"HVViewer", "Platform", "Backends", "Hosts"})) {
        const Findings found = rule(source);
        all.insert(all.end(), found.begin(), found.end());
    }
    return all;
}

SourceText text(std::string_view code) {
    return {"File.cpp", code};
}

} // namespace

TEST(Sources, CallOnlyTheCoreOfGLES2) {
    EXPECT_THAT(findingsInSources(unknownGLFunctions), IsEmpty());
}

TEST(Sources, UseOnlyTheConstantsOfGLES2) {
    EXPECT_THAT(findingsInSources(unknownGLConstants), IsEmpty());
}

TEST(Sources, LookUpNothingButVertexArrayObjects) {
    EXPECT_THAT(findingsInSources(unknownGLLookUps), IsEmpty());
}

TEST(Sources, IncludeNoOtherGLHeader) {
    EXPECT_THAT(findingsInSources(otherGLHeaders), IsEmpty());
}

TEST(Sources, ReadVerticesAndIndicesFromBuffers) {
    EXPECT_THAT(findingsInSources(clientSideArrays), IsEmpty());
}

TEST(Sources, UseNoSizedTextureFormats) {
    EXPECT_THAT(findingsInSources(badTextureFormats), IsEmpty());
}

TEST(GLFunctionRule, FindsAFunctionOfALaterVersion) {
    EXPECT_THAT(unknownGLFunctions(text("void f() {\n    glDrawBuffers(1, x);\n}")),
                ElementsAre("File.cpp:2: glDrawBuffers is not in OpenGL ES 2.0"));
    EXPECT_THAT(unknownGLFunctions(text("glBindVertexArray (0); glMapBufferOES(0, 0);")),
                SizeIs(2));
}

TEST(GLFunctionRule, PassesTheCoreAndWhatOnlyLooksLikeIt) {
    EXPECT_THAT(
        unknownGLFunctions(text("glClear(GL_COLOR_BUFFER_BIT); glView_.lock(); anglFoo();")),
        IsEmpty());
    EXPECT_THAT(unknownGLFunctions(text("// glDrawBuffers(1)\n/* glFoo() */ f(\"glFoo()\");")),
                IsEmpty());
}

TEST(GLConstantRule, FindsConstantsOfLaterVersionsAndRepeatingTextures) {
    EXPECT_THAT(unknownGLConstants(text("f(GL_RGBA8, GL_REPEAT, GL_MIRRORED_REPEAT, GL_RED);")),
                SizeIs(4));
    EXPECT_THAT(unknownGLConstants(text("f(GL_UNPACK_ROW_LENGTH);")), SizeIs(1));
}

TEST(GLConstantRule, PassesTheCore) {
    EXPECT_THAT(unknownGLConstants(text("f(GL_RGBA, GL_TEXTURE0 + 4); // GL_RGBA8")), IsEmpty());
}

TEST(GLLookUpRule, FindsEveryNameButThoseOfVertexArrayObjects) {
    EXPECT_THAT(unknownGLLookUps(text("look(\"glGenVertexArraysOES\"); look(\"glMapBufferOES\");")),
                ElementsAre("File.cpp:1: glMapBufferOES is looked up"));
    EXPECT_THAT(unknownGLLookUps(text("log(\"glow\"); log(\"glClear failed\");")), IsEmpty());
}

TEST(GLHeaderRule, FindsEveryOtherGLHeader) {
    for (const char* header : {"GLES3/gl3.h", "GL/gl.h", "GLES2/gl2ext.h", "SDL_opengles2.h",
                               "SDL2/SDL_opengl.h", "epoxy/gl.h"})
        EXPECT_THAT(otherGLHeaders(text("#include <" + std::string(header) + ">\n")), SizeIs(1))
            << header;
    EXPECT_THAT(otherGLHeaders(text("#include <GLES2/gl2.h>\n#include <string>\n")), IsEmpty());
    EXPECT_THAT(otherGLHeaders(text("// #include <GLES3/gl3.h>\n")), IsEmpty());
}

TEST(ClientArrayRule, FindsPointersIntoMemory) {
    EXPECT_THAT(clientSideArrays(text("glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, v);")),
                SizeIs(1));
    EXPECT_THAT(clientSideArrays(text("glDrawElements(GL_TRIANGLES, n,\n GL_UNSIGNED_SHORT,\n"
                                      "               indices.data());")),
                SizeIs(1));
    EXPECT_THAT(clientSideArrays(text("glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0,"
                                      " static_cast<const void*>(v));")),
                SizeIs(1));
}

TEST(ClientArrayRule, PassesOffsetsIntoABuffer) {
    EXPECT_THAT(clientSideArrays(text("glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, f(a, b),"
                                      " nullptr);")),
                IsEmpty());
    EXPECT_THAT(clientSideArrays(text("glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_SHORT,"
                                      " reinterpret_cast<const void*>(offset));")),
                IsEmpty());
}

TEST(TextureFormatRule, FindsSizedFormatsAndConversions) {
    for (const char* formats : {"GL_RGBA8, w, h, 0, GL_RGBA", "GL_RGB565, w, h, 0, GL_RGB",
                                "GL_RGBA, w, h, 0, GL_RGB", "GL_RGBA4, w, h, 0, GL_RGBA4"})
        EXPECT_THAT(badTextureFormats(text("glTexImage2D(GL_TEXTURE_2D, 0, " +
                                           std::string(formats) + ", GL_UNSIGNED_BYTE, f(x, y));")),
                    SizeIs(1))
            << formats;
}

TEST(TextureFormatRule, PassesTheSameFormatTwice) {
    for (const char* formats : {"GL_RGBA, w, h, 0, GL_RGBA", "GL_LUMINANCE, w, h, 0, GL_LUMINANCE",
                                "static_cast<GLint>(format), w, h, 0, format"})
        EXPECT_THAT(badTextureFormats(text("glTexImage2D(GL_TEXTURE_2D, 0, " +
                                           std::string(formats) + ", GL_UNSIGNED_BYTE, f(x, y));")),
                    IsEmpty())
            << formats;
}
