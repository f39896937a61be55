#pragma once

#include <cstdint>

namespace platform {

/// The vertices of a mesh, which stay their owner's.
struct MeshVertices {
    /// 3 floats a vertex: x, y, z.
    const float* positions = nullptr;
    /// 2 floats a vertex: u, v.
    const float* textureCoordinates = nullptr;
    std::int32_t count = 0;
};

/// The GL names that hold one uploaded mesh, and the attribute that takes its texture coordinates.
struct MeshBuffers {
    std::uint32_t vertexArray = 0;
    std::uint32_t positions = 0;
    std::uint32_t textureCoordinates = 0;
};

/// Uploads a mesh into new buffers behind a new vertex array object, and leaves no vertex array
/// bound. Positions feed attribute 0; `usage` is GL's, such as GL_STATIC_DRAW. The GL context is
/// current.
[[nodiscard]] MeshBuffers uploadMesh(const MeshVertices& vertices,
                                     std::uint32_t textureCoordinateAttribute, std::uint32_t usage);

/// Deletes the names. The GL context is current.
void deleteMesh(const MeshBuffers& buffers);

} // namespace platform
