#include "Platform/Foundation/Bundle.h"

#include <string_view>

// Generated from the files beside this one.
extern const std::string_view kVertexPhotoShader;
extern const std::string_view kFragmentPhotoShader;
extern const std::string_view kFragmentVideoShader;

namespace platform {

Bundle& Bundle::framework() {
    static Bundle bundle({{"VertexPhotoShader.vsh", kVertexPhotoShader},
                          {"FragmentPhotoShader.fsh", kFragmentPhotoShader},
                          {"FragmentVideoShader.fsh", kFragmentVideoShader}});
    return bundle;
}

} // namespace platform
