#pragma once

#include "HVViewer/Model/QuadMask.h"
#include "Platform/Graphics/GLKMath.h"

/// Frustum culling: returns the quads of the unit sphere's mesh that a camera can see.
///
/// A quad is culled only if all of its corners are outside of the same frustum plane, by more than
/// a margin for the rounding of the GPU. Drawing the remaining quads therefore gives bit-identical
/// frames. Nothing is culled if an element of the matrix is not finite.
[[nodiscard]] QuadMask visibleQuads(const GLKMatrix4& modelViewProjection);
