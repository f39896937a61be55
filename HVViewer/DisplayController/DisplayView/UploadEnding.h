#pragma once

#include "Platform/Graphics/MeshBuffers.h"

/// Ends the upload of a video frame: takes the name of the mesh's position buffer for a vertex
/// attribute and for a framebuffer as well, as it has always been. Nothing is drawn with either,
/// and `GLQuirks::endsUploadsPlainly` leaves both out. The attribute stays on in the mesh's vertex
/// array alone, and the framebuffer that was bound is bound again; no GL object is left behind, and
/// no error for a name that is beyond the attributes. The GL context is current.
void endUpload(const platform::MeshBuffers& mesh);
