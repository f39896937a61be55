#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Graphics/GLQuirks.h"

#include <cstdint>
#include <functional>
#include <string>

namespace platform {

/// What a host gives of its OpenGL ES 2.0 context.
struct GLBindings {
    /// Makes the context current on the calling thread. Called before any GL call that does not
    /// come from inside the host's own draw call; empty if the context is always current.
    std::function<void()> makeCurrent;
    /// The address of a GL function by name, extensions included.
    std::function<void*(const char*)> procAddress;
    GLQuirks quirks = {};
};

/// Posted when a host has brought a new context in place of one that was lost: every GL name of the
/// earlier one is gone, and whoever shows something sets it up again.
inline constexpr const char* kGLContextWasReplaced = "GLContextWasReplacedNotification";

/// The host's one real GL context: its limits, its quirks and the functions that have to be looked
/// up. One for each environment.
///
/// Installed by the host before the first view is shown and removed after the last is gone.
///
/// Thread: main.
class ZANTO_EXPORT GLDevice {
public:
    [[nodiscard]] static GLDevice& main();

    /// Takes over the host's context and makes it current.
    ///
    /// Errors: a log line and false when it is no OpenGL ES 2.0 context or lacks vertex array
    /// objects; nothing can be drawn then.
    [[nodiscard]] bool install(GLBindings bindings);

    /// The host's context is about to go; objects that outlive it delete nothing any more.
    void uninstall();

    [[nodiscard]] bool isInstalled() const { return installed_; }
    /// Another number for every context that any host of the process has installed, never 0.
    [[nodiscard]] std::uint32_t generation() const { return generation_; }
    void makeCurrent() const;

    /// Longest side of a texture, in pixels.
    [[nodiscard]] int maxTextureSidePx() const { return maxTextureSidePx_; }
    /// EXT_unpack_subimage: uploads can skip what lies between the rows of a picture.
    [[nodiscard]] bool hasUnpackSubimage() const { return hasUnpackSubimage_; }
    [[nodiscard]] const GLQuirks& quirks() const { return bindings_.quirks; }
    void setQuirks(const GLQuirks& quirks) { bindings_.quirks = quirks; }

    /// OES_vertex_array_object, which link libraries do not export.
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
