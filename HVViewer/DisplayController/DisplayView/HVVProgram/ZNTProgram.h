#pragma once

#include "HVViewer/DisplayController/DisplayView/HVVProgram/UniformTable.h"
#include "HVViewer/Model/ContentType.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {
class GLContext;
}

/// The shader program that draws one type of content and the watermark over it.
///
/// Its sources are resources of the framework's bundle. The GL context of the owning view must be
/// current for every function that calls GL.
///
/// Owner:  the display view, which makes a new program for each set-up.
/// Thread: main.
class ZNTProgram {
public:
    using InfoFunction = void (*)(std::uint32_t, std::uint32_t, std::int32_t*);
    using LogFunction = void (*)(std::uint32_t, std::int32_t, std::int32_t*, char*);

    ZNTProgram() = default;
    ~ZNTProgram();
    ZNTProgram(const ZNTProgram&) = delete;
    ZNTProgram& operator=(const ZNTProgram&) = delete;

    /// Compiles and links the program, and fills the slots that the type uses; slots 3 to 7 are
    /// used for video only.
    ///
    /// Errors: throws `AssertionFailure` for an undefined type (the previous program is kept) and
    ///         if linking fails (there is no program then); the log has the reason.
    void buildProgramWithUniforms(UniformTable& uniforms, std::uint32_t& bindedToTextureCoordinates,
                                  ContentType type);
    void run() const;
    /// Deletes the program and its shaders. The program can be built again.
    void cleanUp();

    [[nodiscard]] std::uint32_t programName() const { return programName_; }
    [[nodiscard]] std::uint32_t vertShader() const { return vertShader_; }
    [[nodiscard]] std::uint32_t fragShader() const { return fragShader_; }
    [[nodiscard]] ContentType currentContentType() const { return currentContentType_; }
    /// Attribute names in binding order: the location of an attribute is its index.
    [[nodiscard]] const std::vector<std::string>& attributes() const { return attributes_; }

    /// A no-op if the name is already in the list.
    void addAttributeToProgram(const std::string& name);
    /// Returns a value with all bits set for an unknown name.
    [[nodiscard]] std::uint32_t programAttributeIndex(std::string_view name) const;
    [[nodiscard]] std::int32_t programUniformIndex(const std::string& name) const;

    /// Returns the GL info log of an object, read with the given functions; none if it is empty.
    [[nodiscard]] static std::optional<std::string>
    logForOpenGLObject(std::uint32_t object, InfoFunction infoCallback, LogFunction logFunc);
    [[nodiscard]] std::optional<std::string> programLog() const;
    [[nodiscard]] std::optional<std::string> vertexShaderLog() const;
    [[nodiscard]] std::optional<std::string> fragmentShaderLog() const;

private:
    void attachShaders();
    void attachShadersAttributes();
    void checkAndAttachProgram();
    [[nodiscard]] bool linkProgram();
    void fillUniforms(UniformTable& uniforms) const;
    /// Returns true if there is a source, even if it does not compile: linking reports that error.
    [[nodiscard]] static bool compileShader(std::uint32_t& shader, std::uint32_t type,
                                            const std::optional<std::string>& string);

    std::shared_ptr<platform::GLContext> context_;
    std::uint32_t programName_ = 0;
    std::uint32_t vertShader_ = 0;
    std::uint32_t fragShader_ = 0;
    std::vector<std::string> attributes_;
    ContentType currentContentType_ = ContentType::Undefined;
};
