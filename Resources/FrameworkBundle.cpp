#include "Platform/Foundation/Bundle.h"
#include "Resources/InstalledFolder.h"

#include <string_view>

// Generated from the files in this folder.
extern const std::string_view kVertexPhotoShader;
extern const std::string_view kFragmentPhotoShader;
extern const std::string_view kFragmentVideoShader;
extern const std::string_view kMarkerVertexShader;
extern const std::string_view kMarkerFragmentShader;

namespace platform {

Bundle& Bundle::framework() {
    static Bundle bundle({{"VertexPhotoShader.vsh", kVertexPhotoShader},
                          {"FragmentPhotoShader.fsh", kFragmentPhotoShader},
                          {"FragmentVideoShader.fsh", kFragmentVideoShader},
                          {"Shader.vsh", kMarkerVertexShader},
                          {"Shader.fsh", kMarkerFragmentShader}},
                         installedResourceFolder());
    return bundle;
}

} // namespace platform
