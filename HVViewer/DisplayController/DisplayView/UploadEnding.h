#pragma once

#include "Platform/Graphics/MeshBuffers.h"

/// How the upload of a video's frame ends: the name of the mesh's position buffer is taken for a
/// vertex attribute and for a framebuffer as well, as it has always been. Nothing is drawn with
/// either. `Plain` leaves it out, for a context that minds: a browser draws nothing while an
/// attribute without a buffer is on. Thread: main.
enum class UploadEnding { WithBufferName, Plain };
void setUploadEnding(UploadEnding ending);

/// Ends an upload. The attribute stays on in the mesh's vertex array alone, and the framebuffer
/// that was bound is bound again; no GL object is left behind, and no error for a name that is
/// beyond the attributes. The GL context is current.
void endUpload(const platform::MeshBuffers& mesh);
