#include "Hosts/Headless/SurfacelessContext.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <array>
#include <string>
#include <utility>

namespace zanto {

using platform::Error;
using platform::ErrorCode;

struct SurfacelessContext::Handles {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
};

namespace {

Error failure(const std::string& step) {
    return {ErrorCode::Unavailable, "EGL without a surface: " + step + " failed (error " +
                                        std::to_string(eglGetError()) + ")"};
}

EGLDisplay openDisplay() {
    const auto getPlatformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (!getPlatformDisplay)
        return EGL_NO_DISPLAY;
    return getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
}

} // namespace

platform::Result<std::unique_ptr<SurfacelessContext>> SurfacelessContext::create() {
    auto handles = std::make_unique<Handles>();
    handles->display = openDisplay();
    if (handles->display == EGL_NO_DISPLAY)
        return failure("opening the display");
    if (eglInitialize(handles->display, nullptr, nullptr) == EGL_FALSE)
        return failure("initialising");
    if (eglBindAPI(EGL_OPENGL_ES_API) == EGL_FALSE)
        return failure("choosing OpenGL ES");
    constexpr std::array<EGLint, 5> wanted{EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE,
                                           EGL_OPENGL_ES2_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (eglChooseConfig(handles->display, wanted.data(), &config, 1, &count) == EGL_FALSE ||
        count < 1)
        return failure("choosing a configuration");
    constexpr std::array<EGLint, 3> version{EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
    handles->context = eglCreateContext(handles->display, config, EGL_NO_CONTEXT, version.data());
    if (handles->context == EGL_NO_CONTEXT)
        return failure("creating the context");
    std::unique_ptr<SurfacelessContext> context(new SurfacelessContext(std::move(handles)));
    context->makeCurrent();
    return context;
}

SurfacelessContext::SurfacelessContext(std::unique_ptr<Handles> handles)
    : handles_(std::move(handles)) {}

SurfacelessContext::~SurfacelessContext() {
    eglMakeCurrent(handles_->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(handles_->display, handles_->context);
    // The display is not terminated, because that would unload the driver while others use it.
}

void SurfacelessContext::makeCurrent() const {
    if (eglGetCurrentContext() != handles_->context)
        eglMakeCurrent(handles_->display, EGL_NO_SURFACE, EGL_NO_SURFACE, handles_->context);
}

void* SurfacelessContext::procAddress(const char* name) {
    return reinterpret_cast<void*>(eglGetProcAddress(name));
}

} // namespace zanto
