#pragma once

#include <cstdint>
#include <memory>

namespace platform {

/// A logical handle on the host's only GL context. All handles share that real context, so GL names
/// stay valid whichever handle is released.
///
/// Thread: main.
class GLContext {
public:
    /// Errors: null and a log line while no host has installed a context.
    [[nodiscard]] static std::shared_ptr<GLContext> create();

    /// Makes the host's context current for the GL calls that follow.
    ///
    /// Errors: false for null and for a handle on a context that the host has removed; the caller
    ///         must not call GL then.
    static bool setCurrentContext(const std::shared_ptr<GLContext>& context);

    /// The handle that was made current last; null if it has been destroyed.
    [[nodiscard]] static std::shared_ptr<GLContext> currentContext();

private:
    explicit GLContext(std::uint32_t generation) : generation_(generation) {}
    std::uint32_t generation_;
};

} // namespace platform
