#pragma once

#include "HVViewer/Model/VisualObjectModel.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// Owns the arrays of every mesh that a visual object has built.
class MeshArrays {
public:
    /// Uninitialised storage for one mesh. It keeps its address until the `MeshArrays` is
    /// destroyed.
    struct Mesh {
        float* vertices;
        float* texCoords;
        std::int32_t numberOfVertices;

        [[nodiscard]] VisualObjectModel model() const {
            return {vertices, texCoords, numberOfVertices};
        }
    };
    [[nodiscard]] Mesh allocate(std::int32_t numberOfVertices);

    /// Builds a rectangle in the plane z = 0, 1 wide and 2 * `halfHeight` high, from six vertices.
    /// Its texture coordinates are inset from the edges, so that linear filtering stays inside of
    /// the image.
    [[nodiscard]] VisualObjectModel buildPlane(float halfHeight);

private:
    std::vector<std::unique_ptr<float[]>> arrays_;
};
