#pragma once

#include <cstdint>

namespace platform {

/// The vertices of a mesh. Their owner keeps them.
struct MeshVertices {
    /// 3 floats per vertex: x, y, z.
    const float* positions = nullptr;
    /// 2 floats per vertex: u, v.
    const float* textureCoordinates = nullptr;
    std::int32_t count = 0;
};

/// The GL names of one uploaded mesh.
struct MeshBuffers {
    std::uint32_t vertexArray = 0;
    std::uint32_t positions = 0;
    std::uint32_t textureCoordinates = 0;
};

/// Uploads a mesh into new buffers with a new vertex array object, and leaves no vertex array
/// bound. Attribute 0 is the position; `usage` is GL's, such as GL_STATIC_DRAW. Precondition: the
/// GL context is current.
[[nodiscard]] MeshBuffers uploadMesh(const MeshVertices& vertices,
                                     std::uint32_t textureCoordinateAttribute, std::uint32_t usage);

/// Deletes the GL names. Precondition: the GL context is current.
void deleteMesh(const MeshBuffers& buffers);

} // namespace platform
