#include "Platform/Graphics/GLContext.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Graphics/GLDevice.h"

namespace platform {
namespace {

std::weak_ptr<GLContext>& lastMadeCurrent() {
    return Environment::current().part<std::weak_ptr<GLContext>>();
}

} // namespace

std::shared_ptr<GLContext> GLContext::create() {
    if (!GLDevice::main().isInstalled()) {
        log(LogLevel::Error, "graphics: no host has brought a GL context; nothing is shown");
        return nullptr;
    }
    return std::shared_ptr<GLContext>(new GLContext(GLDevice::main().generation()));
}

bool GLContext::setCurrentContext(const std::shared_ptr<GLContext>& context) {
    const GLDevice& device = GLDevice::main();
    if (!context || !device.isInstalled() || context->generation_ != device.generation())
        return false;
    device.makeCurrent();
    lastMadeCurrent() = context;
    return true;
}

std::shared_ptr<GLContext> GLContext::currentContext() {
    return lastMadeCurrent().lock();
}

} // namespace platform
