#pragma once

#include "HVViewer/Model/VisualObjectModel.h"
#include "Platform/Graphics/GLKMath.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class QuadMask;

/// Consecutive vertices of a strip that one call draws.
struct VertexRun {
    std::int32_t first = 0;
    std::int32_t count = 0;
};

/// The vertices of a mesh that each of the two passes of a frame draws.
struct MeshPasses {
    std::vector<VertexRun> content;
    std::vector<VertexRun> watermark;
};

/// The upper limit of draw calls for both passes of a frame together.
inline constexpr std::size_t kMostDrawCalls = 64;

/// Plans the draw calls of a frame. For the sphere, the content pass has the quads that the camera
/// can see, and the watermark pass has those of them on which the watermark shows (none if
/// `watermarkCoverage` is null). Any other mesh is drawn whole, and so is the sphere with
/// `GLQuirks::drawsWholeMeshes`. The frame is bit-identical either way.
[[nodiscard]] MeshPasses planPasses(const VisualObjectModel& model,
                                    const GLKMatrix4& modelViewProjection,
                                    const QuadMask* watermarkCoverage);

/// Draws runs of the bound vertex array as triangle strips.
void drawRuns(const std::vector<VertexRun>& runs);
