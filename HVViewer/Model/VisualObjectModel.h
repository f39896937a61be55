#pragma once

#include "Platform/Graphics/MeshBuffers.h"

#include <cstdint>

/// A view of a mesh, copied by value. The visual object that built the arrays owns them.
struct VisualObjectModel {
    /// 3 floats per vertex: x, y, z. Null in an empty model.
    const float* vertices = nullptr;
    /// 2 floats per vertex: u, v.
    const float* texCoords = nullptr;
    std::int32_t numberOfVertices = 0;

    /// The argument of `platform::uploadMesh`.
    operator platform::MeshVertices() const { return {vertices, texCoords, numberOfVertices}; }
};
