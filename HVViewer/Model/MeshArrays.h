#pragma once

#include "HVViewer/Model/VisualObjectModel.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// The arrays of every mesh that a visual object has built.
class MeshArrays {
public:
    /// Uninitialised room for a mesh; it stays where it is until the object dies.
    struct Mesh {
        float* vertices;
        float* texCoords;
        std::int32_t numberOfVertices;

        [[nodiscard]] VisualObjectModel model() const {
            return {vertices, texCoords, numberOfVertices};
        }
    };
    [[nodiscard]] Mesh allocate(std::int32_t numberOfVertices);

    /// A rectangle in the plane z = 0, 1 wide and 2 * `halfHeight` tall, as six vertices. Its
    /// texture coordinates are pulled in from the edges, so that linear filtering stays inside.
    [[nodiscard]] VisualObjectModel buildPlane(float halfHeight);

private:
    std::vector<std::unique_ptr<float[]>> arrays_;
};
