#pragma once

#include "Benchmarks/BareProgram.h"
#include "HVViewer/DisplayController/DisplayView/MeshPasses.h"
#include "HVViewer/Model/ZNTSphericalVO.h"

#include <cstdint>
#include <vector>

/// Draws runs of the sphere's triangle strip once, without clearing, watermark or any other drawing
/// of the library: the baseline cost of the mesh alone.
class BareMesh {
public:
    BareMesh();
    ~BareMesh();
    BareMesh(const BareMesh&) = delete;
    BareMesh& operator=(const BareMesh&) = delete;

    /// Draws into the bound framebuffer.
    void draw(std::uint32_t texture, const GLKMatrix4& modelViewProjection,
              const std::vector<VertexRun>& runs) const;

private:
    BareProgram program_;
    std::int32_t matrix_;
    ZNTSphericalVO sphere_;
    std::uint32_t positions_ = 0;
    std::uint32_t places_ = 0;
};
