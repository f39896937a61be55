#pragma once

#include "Platform/Graphics/MeshBuffers.h"

/// Ends the upload of a video frame: uses the name of the mesh's position buffer as a vertex
/// attribute and as a framebuffer name. Nothing is drawn with either; the calls keep the
/// established sequence of GL calls, and `GLQuirks::endsUploadsPlainly` skips them. The attribute
/// stays enabled in the mesh's vertex array only, and the previous framebuffer is bound again. The
/// function leaves no GL object behind, and no GL error if the name exceeds the number of
/// attributes. The GL context must be current.
void endUpload(const platform::MeshBuffers& mesh);
