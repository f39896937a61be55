#include "HVViewer/DisplayController/DisplayView/MeshPasses.h"

#include "HVViewer/Model/QuadMask.h"
#include "HVViewer/Model/VisibleQuads.h"
#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

namespace {

constexpr std::int32_t kVerticesPerQuad = 4;
// The watermark is a band of text, of which only a few rings are visible at once.
constexpr std::size_t kMostWatermarkRuns = 16;
constexpr std::size_t kMostContentRuns = kMostDrawCalls - kMostWatermarkRuns;

std::vector<VertexRun> vertexRuns(const QuadMask& mask, std::size_t most) {
    std::vector<VertexRun> runs;
    for (const QuadRun& quads : mask.runs(most))
        runs.push_back({quads.first * kVerticesPerQuad, quads.count * kVerticesPerQuad});
    return runs;
}

} // namespace

MeshPasses planPasses(const VisualObjectModel& model, const GLKMatrix4& modelViewProjection,
                      const QuadMask* watermarkCoverage) {
    const bool isSphere = model.numberOfVertices == QuadMask::kQuads * kVerticesPerQuad;
    if (!isSphere || platform::GLDevice::main().quirks().drawsWholeMeshes) {
        const std::vector<VertexRun> whole{{0, model.numberOfVertices}};
        return {whole, whole};
    }
    QuadMask visible = visibleQuads(modelViewProjection);
    MeshPasses passes;
    passes.content = vertexRuns(visible, kMostContentRuns);
    if (watermarkCoverage) {
        visible &= *watermarkCoverage;
        passes.watermark = vertexRuns(visible, kMostWatermarkRuns);
    }
    return passes;
}

void drawRuns(const std::vector<VertexRun>& runs) {
    for (const VertexRun& run : runs)
        glDrawArrays(GL_TRIANGLE_STRIP, run.first, run.count);
}
