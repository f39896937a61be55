#pragma once

/// The numbers of GL objects by kind.
struct GLCensus {
    int textures = 0;
    int buffers = 0;
    int framebuffers = 0;
    int renderbuffers = 0;
    int programs = 0;
    int shaders = 0;
    /// Each hot spot drawer leaves one buffer behind until the context is destroyed: 48 bytes,
    /// written once. Size and usage distinguish these from `buffers`.
    int keptBuffers = 0;
};

/// A context must be current. Buffer bindings are restored.
[[nodiscard]] GLCensus takeGLCensus();
