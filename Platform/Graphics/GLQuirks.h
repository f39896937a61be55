#pragma once

namespace platform {

/// Workarounds for GL contexts and drivers that are stricter or slower than others. They do not
/// change what is drawn. All are off unless a host sets them; those that are set are logged when
/// the context is installed.
struct GLQuirks {
    /// For WebGL, where binding a framebuffer name that was never generated is an error, and an
    /// enabled attribute without a buffer stops every draw call. When set, the upload of a video
    /// frame skips its last two calls, which use a buffer's name as an attribute and as a
    /// framebuffer.
    bool endsUploadsPlainly = false;
    /// For drivers on which many draw calls cost more than many vertices. When set, every mesh is
    /// drawn whole: without frustum culling, and including the quads on which no watermark is
    /// visible.
    bool drawsWholeMeshes = false;
    /// For drivers that offer EXT_unpack_subimage but fail to apply it. When set, rows with padding
    /// between them are uploaded from a copy without padding.
    bool copiesPaddedRows = false;
};

} // namespace platform
