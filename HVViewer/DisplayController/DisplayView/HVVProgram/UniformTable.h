#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// Uniform locations, filled by the program build and read by the drawer every frame. A slot names
/// a use, so several may hold the same location; -1 is no such uniform.
using UniformTable = std::array<std::int32_t, 10>;

enum UniformSlot : std::size_t {
    kUniformContentMatrix = 0,
    kUniformSpareMatrix = 1,
    kUniformPhotoSampler = 2,
    kUniformContentLuma = 3,
    kUniformContentChroma = 4,
    kUniformWatermarkLuma = 5,
    kUniformWatermarkChroma = 6,
    kUniformColorConversion = 7,
    kUniformWatermarkMatrix = 8,
    kUniformColorPicking = 9,
};
