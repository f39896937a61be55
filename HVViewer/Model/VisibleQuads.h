#pragma once

#include "HVViewer/Model/QuadMask.h"
#include "Platform/Graphics/GLKMath.h"

/// The quads of the unit sphere's mesh that a camera may see.
///
/// A quad is left out only when all its corners lie outside the same plane of the view, with a
/// margin for the rounding of the graphics hardware; so drawing the rest gives the same picture to
/// the last bit. A matrix with a NaN leaves nothing out.
[[nodiscard]] QuadMask visibleQuads(const GLKMatrix4& modelViewProjection);
