#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// Uniform locations. Building the program fills the table, and the drawer reads it for every
/// frame. A slot stands for a use, so several slots may hold the same location; -1 means that the
/// uniform does not exist.
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
