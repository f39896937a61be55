#include "HVViewer/DisplayController/DisplayView/HVVProgram/ZNTProgram.h"

#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/Bundle.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Graphics/GLContext.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <string>

namespace {

constexpr const char* PhotoVertextShaderName = "VertexPhotoShader";
constexpr const char* PhotoFragmentShaderName = "FragmentPhotoShader";
constexpr const char* VideoFragmentShaderName = "FragmentVideoShader";

void logError(const std::string& text) {
    platform::log(platform::LogLevel::Error, text);
}

std::string orNull(const std::optional<std::string>& text) {
    return text.value_or("(null)");
}

void deleteShader(std::uint32_t& shader) {
    if (shader != 0)
        glDeleteShader(shader);
    shader = 0;
}

} // namespace

ZNTProgram::~ZNTProgram() {
    cleanUp();
}

void ZNTProgram::buildProgramWithUniforms(UniformTable& uniforms,
                                          std::uint32_t& bindedToTextureCoordinates,
                                          ContentType type) {
    if (type == ContentType::Undefined)
        platform::failAssertion("ZNTProgram", 69, "Content type cant be Undefined");
    cleanUp();
    context_ = platform::GLContext::currentContext();
    currentContentType_ = type;
    programName_ = glCreateProgram();
    attachShaders();
    attachShadersAttributes();
    checkAndAttachProgram();
    bindedToTextureCoordinates = programAttributeIndex("a_textureCoord");
    fillUniforms(uniforms);
}

void ZNTProgram::fillUniforms(UniformTable& uniforms) const {
    uniforms[kUniformColorPicking] = programUniformIndex("u_enableColorPicking");
    const std::int32_t matrix = programUniformIndex("u_modelViewProjectionMatrix");
    uniforms[kUniformSpareMatrix] = matrix;
    uniforms[kUniformContentMatrix] = matrix;
    uniforms[kUniformWatermarkMatrix] = matrix;
    uniforms[kUniformPhotoSampler] = programUniformIndex("u_Sampler");
    if (currentContentType_ != ContentType::Video)
        return;
    uniforms[kUniformContentChroma] = programUniformIndex("SamplerUV");
    uniforms[kUniformContentLuma] = programUniformIndex("SamplerY");
    uniforms[kUniformWatermarkChroma] = programUniformIndex("SamplerUV");
    uniforms[kUniformWatermarkLuma] = programUniformIndex("SamplerY");
    uniforms[kUniformColorConversion] = programUniformIndex("colorConversionMatrix");
}

void ZNTProgram::attachShaders() {
    const auto& bundle = platform::Bundle::framework();
    const auto* fragmentName = currentContentType_ == ContentType::Photo ? PhotoFragmentShaderName
                                                                         : VideoFragmentShaderName;
    if (!compileShader(vertShader_, GL_VERTEX_SHADER, bundle.string(PhotoVertextShaderName, "vsh")))
        logError("Cant compile vertex shader");
    if (!compileShader(fragShader_, GL_FRAGMENT_SHADER, bundle.string(fragmentName, "fsh")))
        logError("Cant compile fragment shader");
    glAttachShader(programName_, vertShader_);
    glAttachShader(programName_, fragShader_);
}

bool ZNTProgram::compileShader(std::uint32_t& shader, std::uint32_t type,
                               const std::optional<std::string>& string) {
    if (!string)
        logError("Cant find file");
    shader = glCreateShader(type);
    // A missing source is compiled as an empty one, so that linking reports the whole set-up.
    const std::string text = string.value_or(std::string());
    const GLchar* source = text.c_str();
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLint compiled = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled == GL_FALSE) {
        if (const auto log = logForOpenGLObject(shader, glGetShaderiv, glGetShaderInfoLog))
            logError("Shader compile informations:\n" + *log);
    }
    return string.has_value();
}

void ZNTProgram::attachShadersAttributes() {
    addAttributeToProgram("a_position");
    addAttributeToProgram("a_textureCoord");
}

void ZNTProgram::addAttributeToProgram(const std::string& name) {
    if (std::find(attributes_.begin(), attributes_.end(), name) != attributes_.end())
        return;
    attributes_.push_back(name);
    glBindAttribLocation(programName_, programAttributeIndex(name), name.c_str());
}

std::uint32_t ZNTProgram::programAttributeIndex(std::string_view name) const {
    const auto found = std::find(attributes_.begin(), attributes_.end(), name);
    if (found == attributes_.end())
        return ~std::uint32_t{0};
    return static_cast<std::uint32_t>(found - attributes_.begin());
}

std::int32_t ZNTProgram::programUniformIndex(const std::string& name) const {
    return glGetUniformLocation(programName_, name.c_str());
}

bool ZNTProgram::linkProgram() {
    glLinkProgram(programName_);
    GLint linked = GL_FALSE;
    glGetProgramiv(programName_, GL_LINK_STATUS, &linked);
    if (linked == GL_FALSE)
        return false;
    deleteShader(vertShader_);
    deleteShader(fragShader_);
    return true;
}

void ZNTProgram::checkAndAttachProgram() {
    if (linkProgram())
        return;
    logError("Program link log: " + orNull(programLog()));
    logError("Fragment shader compile log: " + orNull(fragmentShaderLog()));
    logError("Vertex shader compile log: " + orNull(vertexShaderLog()));
    cleanUp();
    platform::failAssertion("ZNTProgram", 125, "Failed during linking process");
}

std::optional<std::string> ZNTProgram::programLog() const {
    return logForOpenGLObject(programName_, glGetProgramiv, glGetProgramInfoLog);
}

// The program's functions are used on purpose: the log of a shader is printed when it is compiled.
std::optional<std::string> ZNTProgram::vertexShaderLog() const {
    return logForOpenGLObject(vertShader_, glGetProgramiv, glGetProgramInfoLog);
}

std::optional<std::string> ZNTProgram::fragmentShaderLog() const {
    return logForOpenGLObject(fragShader_, glGetProgramiv, glGetProgramInfoLog);
}

std::optional<std::string> ZNTProgram::logForOpenGLObject(std::uint32_t object,
                                                          InfoFunction infoCallback,
                                                          LogFunction logFunc) {
    GLint length = 0; // stays 0 if the functions do not match the kind of object
    infoCallback(object, GL_INFO_LOG_LENGTH, &length);
    if (length < 1)
        return std::nullopt;
    std::string text(static_cast<std::size_t>(length), '\0');
    logFunc(object, length, nullptr, text.data());
    // The length that GL reports includes the terminating NUL.
    text.resize(text.find_last_not_of('\0') + 1);
    return text;
}

void ZNTProgram::run() const {
    glUseProgram(programName_);
}

void ZNTProgram::cleanUp() {
    attributes_.clear();
    // GL names of a lost context must not be deleted in the context that replaced it.
    if (platform::GLContext::setCurrentContext(context_)) {
        deleteShader(vertShader_);
        deleteShader(fragShader_);
        glDeleteProgram(programName_);
    }
    vertShader_ = fragShader_ = programName_ = 0;
}
