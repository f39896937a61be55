#pragma once

#include "Platform/Foundation/Result.h"

#include <memory>

namespace zanto {

/// An OpenGL ES 2.0 context without a window or a surface.
///
/// Thread: main.
class SurfacelessContext {
public:
    /// Errors: `Unavailable`, with the step that failed.
    [[nodiscard]] static platform::Result<std::unique_ptr<SurfacelessContext>> create();
    ~SurfacelessContext();
    SurfacelessContext(const SurfacelessContext&) = delete;
    SurfacelessContext& operator=(const SurfacelessContext&) = delete;

    void makeCurrent() const;
    [[nodiscard]] static void* procAddress(const char* name);

private:
    struct Handles;
    explicit SurfacelessContext(std::unique_ptr<Handles> handles);
    std::unique_ptr<Handles> handles_;
};

} // namespace zanto
