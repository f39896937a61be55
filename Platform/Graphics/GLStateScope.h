#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace platform {

/// Restores the application's GL state when the scope ends, for set-up and uploads inside calls
/// that an application may make between GL calls of its own.
///
/// The state is the bound program, vertex array, array buffer and 2D textures of units 0 to 4, the
/// active unit, the unpack alignment, the depth test, the depth mask and face culling. Drawing
/// changes more than that. An object that was deleted in the meantime is not bound again.
///
/// The scope does nothing while no host has installed a context.
///
/// Thread: main.
class GLStateScope {
public:
    GLStateScope();
    ~GLStateScope();
    GLStateScope(const GLStateScope&) = delete;
    GLStateScope& operator=(const GLStateScope&) = delete;

private:
    static constexpr std::size_t kUnits = 5;

    std::uint32_t generation_ = 0; // 0: nothing was saved
    int program_ = 0;
    int vertexArray_ = 0;
    int arrayBuffer_ = 0;
    int activeUnit_ = 0;
    std::array<int, kUnits> textures_{};
    int unpackAlignment_ = 0;
    bool depthTest_ = false;
    bool culling_ = false;
    bool depthMask_ = false;
};

} // namespace platform
