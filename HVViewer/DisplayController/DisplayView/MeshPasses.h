#pragma once

#include "HVViewer/Model/VisualObjectModel.h"
#include "Platform/Graphics/GLKMath.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class QuadMask;

/// Vertices of a strip that are drawn by one call.
struct VertexRun {
    std::int32_t first = 0;
    std::int32_t count = 0;
};

/// What of a mesh the two passes of a frame draw.
struct MeshPasses {
    std::vector<VertexRun> content;
    std::vector<VertexRun> watermark;
};

/// The most draw calls that both passes of a frame take together.
inline constexpr std::size_t kMostDrawCalls = 64;

/// Of the sphere the runs that the camera can see and, for the watermark, those of them on which it
/// shows (none while there is no watermark: null); of any other mesh the whole, as with
/// `GLQuirks::drawsWholeMeshes`. The picture is the same to the last bit either way.
[[nodiscard]] MeshPasses planPasses(const VisualObjectModel& model,
                                    const GLKMatrix4& modelViewProjection,
                                    const QuadMask* watermarkCoverage);

/// Draws runs of the bound vertex array as triangle strips.
void drawRuns(const std::vector<VertexRun>& runs);
