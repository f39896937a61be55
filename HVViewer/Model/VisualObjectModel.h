#pragma once

#include "Platform/Graphics/MeshBuffers.h"

#include <cstdint>

/// A mesh, copied by value; it does not own its arrays, the visual object that built them does.
struct VisualObjectModel {
    /// 3 floats a vertex: x, y, z. Null in an empty model.
    const float* vertices = nullptr;
    /// 2 floats a vertex: u, v.
    const float* texCoords = nullptr;
    std::int32_t numberOfVertices = 0;

    /// What `platform::uploadMesh` takes.
    operator platform::MeshVertices() const { return {vertices, texCoords, numberOfVertices}; }
};
