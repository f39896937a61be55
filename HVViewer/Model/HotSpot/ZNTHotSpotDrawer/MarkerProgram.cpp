#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/MarkerProgram.h"

#include "Platform/Foundation/Bundle.h"
#include "Platform/Foundation/Log.h"

#include <GLES2/gl2.h>

#include <utility>

namespace {

constexpr const char* kShaderName = "Shader";

void logError(const std::string& text) {
    platform::log(platform::LogLevel::Error, text);
}

/// The info log of a shader or program, without the terminating NUL.
std::string infoLog(GLuint name, decltype(glGetShaderiv)* getLength,
                    decltype(glGetShaderInfoLog)* getText) {
    GLint length = 0;
    getLength(name, GL_INFO_LOG_LENGTH, &length);
    if (length <= 0)
        return {};
    std::string text(static_cast<std::size_t>(length), '\0');
    getText(name, length, &length, text.data());
    text.resize(static_cast<std::size_t>(length));
    return text;
}

/// A shader that is deleted once the program has been linked.
struct Shader {
    Shader() = default;
    ~Shader() {
        if (name != 0)
            glDeleteShader(name);
    }
    Shader(const Shader&) = delete;
    Shader& operator=(const Shader&) = delete;
    std::uint32_t name = 0;
};

} // namespace

bool MarkerProgram::loadShaders() {
    name_ = glCreateProgram();
    Shader vertex;
    if (!compileShader(vertex.name, GL_VERTEX_SHADER, "vsh")) {
        logError("Failed to compile vertex shader");
        return false;
    }
    Shader fragment;
    if (!compileShader(fragment.name, GL_FRAGMENT_SHADER, "fsh")) {
        logError("Failed to compile fragment shader");
        return false;
    }
    glAttachShader(name_, vertex.name);
    glAttachShader(name_, fragment.name);
    glBindAttribLocation(name_, 0, "a_position");
    if (!linkProgram()) {
        logError("Failed to link program: " + std::to_string(name_));
        tearDown();
        return false;
    }
    readLocations();
    glDetachShader(name_, vertex.name);
    glDetachShader(name_, fragment.name);
    return true;
}

bool MarkerProgram::compileShader(std::uint32_t& shader, std::uint32_t type,
                                  const char* resourceType) {
    const auto text = platform::Bundle::framework().string(kShaderName, resourceType);
    if (!text || text->empty()) {
        logError("Failed to load vertex shader");
        return false;
    }
    shader = glCreateShader(type);
    const GLchar* source = text->c_str();
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    if (const std::string log = infoLog(shader, glGetShaderiv, glGetShaderInfoLog); !log.empty())
        logError("Shader compile log:\n" + log);
    GLint compiled = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled == GL_TRUE)
        return true;
    glDeleteShader(std::exchange(shader, 0));
    return false;
}

bool MarkerProgram::linkProgram() const {
    glLinkProgram(name_);
    GLint linked = GL_FALSE;
    glGetProgramiv(name_, GL_LINK_STATUS, &linked);
    return linked == GL_TRUE;
}

bool MarkerProgram::validateProgram() const {
    glValidateProgram(name_);
    if (const std::string log = infoLog(name_, glGetProgramiv, glGetProgramInfoLog); !log.empty())
        logError("Program validate log:\n" + log);
    GLint valid = GL_FALSE;
    glGetProgramiv(name_, GL_VALIDATE_STATUS, &valid);
    return valid == GL_TRUE;
}

void MarkerProgram::readLocations() {
    uniforms_.matrix = glGetUniformLocation(name_, "u_modelViewProjectionMatrix");
    uniforms_.texture = glGetUniformLocation(name_, "u_texture");
    uniforms_.enableColorPicking = glGetUniformLocation(name_, "u_enableColorPicking");
    uniforms_.color = glGetUniformLocation(name_, "u_color");
    textureCoordinates_ = static_cast<std::uint32_t>(glGetAttribLocation(name_, "a_texCoordIn"));
}

void MarkerProgram::tearDown() {
    if (name_ != 0)
        glDeleteProgram(std::exchange(name_, 0));
}
