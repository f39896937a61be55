#pragma once

#include "HVViewer/Model/VisualObjectModel.h"

#include <cstdint>

/// The GL names that hold one uploaded mesh, and the attribute that takes its texture coordinates.
struct MeshBuffers {
    std::uint32_t vertexArray = 0;
    std::uint32_t positions = 0;
    std::uint32_t textureCoordinates = 0;
};

/// Uploads a mesh into new buffers behind a new vertex array object, and leaves no vertex array
/// bound. Positions feed attribute 0; `usage` is GL's, such as GL_STATIC_DRAW. The GL context is
/// current.
[[nodiscard]] MeshBuffers uploadMesh(const VisualObjectModel& model,
                                     std::uint32_t textureCoordinateAttribute, std::uint32_t usage);

/// Deletes the names. The GL context is current.
void deleteMesh(const MeshBuffers& buffers);
