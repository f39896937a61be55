#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Graphics/GLQuirks.h"

#include <cstdint>
#include <functional>
#include <string>

namespace platform {

/// The OpenGL ES 2.0 context of a host.
struct GLBindings {
    /// Makes the context current on the calling thread. The library calls it before any GL call
    /// outside of the host's own draw call. Optional: empty if the context is always current.
    std::function<void()> makeCurrent;
    /// Returns the address of a GL function by its name, including extension functions. Required.
    std::function<void*(const char*)> procAddress;
    GLQuirks quirks = {};
};

/// Posted when a host has installed a new context in place of a lost one. All GL names of the
/// earlier context are invalid, so observers that draw set up their GL objects again.
inline constexpr const char* kGLContextWasReplaced = "GLContextWasReplacedNotification";

/// The host's only real GL context: its limits, its quirks and the extension functions that are
/// loaded by name. Each environment has one device.
///
/// The host installs it before the first view is shown, and uninstalls it after the last one has
/// gone.
///
/// Thread: main.
class ZANTO_EXPORT GLDevice {
public:
    [[nodiscard]] static GLDevice& main();

    /// Installs the host's context and makes it current.
    ///
    /// Errors: false and a log line when the context is not OpenGL ES 2.0 or later or lacks vertex
    ///         array objects; nothing can be drawn then.
    [[nodiscard]] bool install(GLBindings bindings);

    /// Called before the context is destroyed. Objects that outlive the context delete no GL names.
    void uninstall();

    [[nodiscard]] bool isInstalled() const { return installed_; }
    /// Identifies the installed context. No two contexts of the process have the same number; 0
    /// before the first installation.
    [[nodiscard]] std::uint32_t generation() const { return generation_; }
    void makeCurrent() const;

    /// The longest side of a texture, in pixels.
    [[nodiscard]] int maxTextureSidePx() const { return maxTextureSidePx_; }
    /// EXT_unpack_subimage: uploads can skip the padding between the rows of an image.
    [[nodiscard]] bool hasUnpackSubimage() const { return hasUnpackSubimage_; }
    [[nodiscard]] const GLQuirks& quirks() const { return bindings_.quirks; }
    void setQuirks(const GLQuirks& quirks) { bindings_.quirks = quirks; }

    /// OES_vertex_array_object. Its functions are loaded by name because GL libraries do not export
    /// them.
    void genVertexArrays(int count, std::uint32_t* names) const { genVertexArrays_(count, names); }
    void bindVertexArray(std::uint32_t name) const { bindVertexArray_(name); }
    void deleteVertexArrays(int count, const std::uint32_t* names) const {
        deleteVertexArrays_(count, names);
    }
    [[nodiscard]] bool isVertexArray(std::uint32_t name) const { return isVertexArray_(name) != 0; }

private:
    [[nodiscard]] bool adoptContext();
    [[nodiscard]] bool loadVertexArrayFunctions();

    GLBindings bindings_;
    bool installed_ = false;
    std::uint32_t generation_ = 0;
    int maxTextureSidePx_ = 0;
    bool hasUnpackSubimage_ = false;
    void (*genVertexArrays_)(int, std::uint32_t*) = nullptr;
    void (*bindVertexArray_)(std::uint32_t) = nullptr;
    void (*deleteVertexArrays_)(int, const std::uint32_t*) = nullptr;
    std::uint8_t (*isVertexArray_)(std::uint32_t) = nullptr;
};

} // namespace platform
