#include "Platform/Graphics/GLDevice.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Log.h"

#include <GLES2/gl2.h>

#include <atomic>
#include <string_view>
#include <utility>

namespace platform {
namespace {

std::string glString(GLenum name) {
    const GLubyte* text = glGetString(name);
    return text ? reinterpret_cast<const char*>(text) : std::string();
}

bool offers(const char* extension) {
    return glString(GL_EXTENSIONS).find(extension) != std::string::npos;
}

/// A counter of the process, so that a handle on one host's context is never valid for another's.
std::uint32_t nextGeneration() {
    static std::atomic<std::uint32_t> last{0};
    return ++last;
}

void logQuirks(const GLQuirks& quirks) {
    const auto logIf = [](bool isOn, const char* what) {
        if (isOn)
            log(LogLevel::Info, std::string("graphics: the host asks for ") + what);
    };
    logIf(quirks.endsUploadsPlainly, "plain endings of uploads");
    logIf(quirks.drawsWholeMeshes, "whole meshes");
    logIf(quirks.copiesPaddedRows, "copies of padded rows");
}

template <class Function>
bool lookUp(Function*& function, const GLBindings& bindings, const char* name) {
    function = reinterpret_cast<Function*>(bindings.procAddress(name));
    return function != nullptr;
}

} // namespace

GLDevice& GLDevice::main() {
    return Environment::current().part<GLDevice>();
}

bool GLDevice::install(GLBindings bindings) {
    bindings_ = std::move(bindings);
    installed_ = adoptContext();
    if (!installed_)
        bindings_ = {};
    Environment::current().setEntry(bindings_.makeCurrent);
    return installed_;
}

bool GLDevice::adoptContext() {
    if (bindings_.makeCurrent)
        bindings_.makeCurrent();
    const std::string version = glString(GL_VERSION);
    if (!version.starts_with("OpenGL ES ")) {
        log(LogLevel::Error, "graphics: the host's context is \"" + version +
                                 "\", not OpenGL ES 2.0 or later; nothing can be drawn");
        return false;
    }
    if (!loadVertexArrayFunctions()) {
        log(LogLevel::Error,
            "graphics: the context lacks OES_vertex_array_object; nothing can be drawn");
        return false;
    }
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxTextureSidePx_);
    hasUnpackSubimage_ = offers("GL_EXT_unpack_subimage");
    generation_ = nextGeneration();
    log(LogLevel::Debug, "graphics: " + glString(GL_RENDERER) + ", " + version +
                             ", textures up to " + std::to_string(maxTextureSidePx_) + " pixels");
    logQuirks(bindings_.quirks);
    return true;
}

bool GLDevice::loadVertexArrayFunctions() {
    return offers("GL_OES_vertex_array_object") && bindings_.procAddress &&
           lookUp(genVertexArrays_, bindings_, "glGenVertexArraysOES") &&
           lookUp(bindVertexArray_, bindings_, "glBindVertexArrayOES") &&
           lookUp(deleteVertexArrays_, bindings_, "glDeleteVertexArraysOES") &&
           lookUp(isVertexArray_, bindings_, "glIsVertexArrayOES");
}

void GLDevice::uninstall() {
    installed_ = false;
    bindings_ = {};
    Environment::current().setEntry(nullptr);
}

void GLDevice::makeCurrent() const {
    if (bindings_.makeCurrent)
        bindings_.makeCurrent();
}

} // namespace platform
