#include "HVViewer/Model/MeshArrays.h"

#include <algorithm>

MeshArrays::Mesh MeshArrays::allocate(std::int32_t numberOfVertices) {
    const auto count = static_cast<std::size_t>(numberOfVertices);
    arrays_.push_back(std::make_unique<float[]>(count * 3));
    float* vertices = arrays_.back().get();
    arrays_.push_back(std::make_unique<float[]>(count * 2));
    return {vertices, arrays_.back().get(), numberOfVertices};
}

VisualObjectModel MeshArrays::buildPlane(float h) {
    constexpr float a = 0.0001F;
    constexpr float b = 0.9999F;
    // The corners of two triangles, in an order in which a strip of them covers the whole
    // rectangle, too.
    const std::array<float, 18> positions{-0.5F, h, 0, 0.5F,  h,  0, 0.5F, -h, 0,
                                          -0.5F, h, 0, -0.5F, -h, 0, 0.5F, -h, 0};
    constexpr std::array<float, 12> texCoords{a, b, b, b, b, a, a, b, a, a, b, a};
    const Mesh mesh = allocate(6);
    std::copy(positions.begin(), positions.end(), mesh.vertices);
    std::copy(texCoords.begin(), texCoords.end(), mesh.texCoords);
    return mesh.model();
}
