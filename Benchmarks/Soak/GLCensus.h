#pragma once

/// How many GL objects of each kind there are.
struct GLCensus {
    int textures = 0;
    int buffers = 0;
    int framebuffers = 0;
    int renderbuffers = 0;
    int programs = 0;
    int shaders = 0;
    /// Every drawer of hot spots leaves one buffer behind for good: 48 bytes, written once. They go
    /// with the context, and are told apart from `buffers` by just that.
    int keptBuffers = 0;
};

/// A context is current; buffer bindings are left as they were.
[[nodiscard]] GLCensus takeGLCensus();
