#pragma once

#include <cstdint>
#include <memory>

namespace platform {

/// A logical handle on the host's one GL context; a second one creates no second real context, so
/// names stay valid whichever handle is released.
///
/// Thread: main.
class GLContext {
public:
    /// Errors: null, and a log line, while no host has brought a context.
    [[nodiscard]] static std::shared_ptr<GLContext> create();

    /// Makes the host's context current for GL calls that follow.
    ///
    /// Errors: false for null and for a handle on a context that the host has taken away; GL must
    /// not be called then.
    static bool setCurrentContext(const std::shared_ptr<GLContext>& context);

    /// The handle that was made current last, null if it is gone.
    [[nodiscard]] static std::shared_ptr<GLContext> currentContext();

private:
    explicit GLContext(std::uint32_t generation) : generation_(generation) {}
    std::uint32_t generation_;
};

} // namespace platform
