#pragma once

namespace platform {

/// Switches for contexts and drivers that stand less than the others, or are quicker another way.
/// None changes a picture. All are off unless a host sets them; those that are set are logged when
/// the context is installed.
struct GLQuirks {
    /// WebGL: an enabled attribute without a buffer stops every draw, and binding a framebuffer
    /// name that was never generated is an error. The upload of a video frame then ends without the
    /// two calls that take a buffer's name for an attribute and for a framebuffer.
    bool endsUploadsPlainly = false;
    /// Many draw calls cost more than many vertices: every mesh is drawn whole, without frustum
    /// culling and without skipping the quads on which no watermark shows.
    bool drawsWholeMeshes = false;
    /// The driver offers EXT_unpack_subimage and fails at it: rows with padding between them are
    /// uploaded from a copy without.
    bool copiesPaddedRows = false;
};

} // namespace platform
