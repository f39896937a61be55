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

/// The shader program that draws one type of content, and the watermark over it.
///
/// Its sources are resources of the framework's bundle. Every operation that calls GL needs the
/// owning view's context to be current.
///
/// Owner:  the display view; a new one is made for every set-up.
/// Thread: main.
class ZNTProgram {
public:
    using InfoFunction = void (*)(std::uint32_t, std::uint32_t, std::int32_t*);
    using LogFunction = void (*)(std::uint32_t, std::int32_t, std::int32_t*, char*);

    ZNTProgram() = default;
    ~ZNTProgram();
    ZNTProgram(const ZNTProgram&) = delete;
    ZNTProgram& operator=(const ZNTProgram&) = delete;

    /// Compiles and links, and fills the slots that the type uses; slots 3 to 7 are a video's only.
    ///
    /// Errors: assertion failures for an undefined type (the earlier program stays) and for a
    ///         program that does not link (nothing stays); the log says why.
    void buildProgramWithUniforms(UniformTable& uniforms, std::uint32_t& bindedToTextureCoordinates,
                                  ContentType type);
    void run() const;
    /// Deletes everything; the program can be built again.
    void cleanUp();

    [[nodiscard]] std::uint32_t programName() const { return programName_; }
    [[nodiscard]] std::uint32_t vertShader() const { return vertShader_; }
    [[nodiscard]] std::uint32_t fragShader() const { return fragShader_; }
    [[nodiscard]] ContentType currentContentType() const { return currentContentType_; }
    /// Names in binding order: an attribute's location is its index.
    [[nodiscard]] const std::vector<std::string>& attributes() const { return attributes_; }

    /// A name that is there already is left alone.
    void addAttributeToProgram(const std::string& name);
    /// All bits set for an unknown name.
    [[nodiscard]] std::uint32_t programAttributeIndex(std::string_view name) const;
    [[nodiscard]] std::int32_t programUniformIndex(const std::string& name) const;

    /// What GL noted about the object, by the functions given; none when it noted nothing.
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
    /// True whenever there was a source, even one that does not compile: linking tells.
    [[nodiscard]] static bool compileShader(std::uint32_t& shader, std::uint32_t type,
                                            const std::optional<std::string>& string);

    std::shared_ptr<platform::GLContext> context_;
    std::uint32_t programName_ = 0;
    std::uint32_t vertShader_ = 0;
    std::uint32_t fragShader_ = 0;
    std::vector<std::string> attributes_;
    ContentType currentContentType_ = ContentType::Undefined;
};
