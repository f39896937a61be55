#pragma once

#include "Platform/Imaging/Image.h"

/// Makes a panorama of gradients and noise, the same every time.
[[nodiscard]] platform::PixelStorage makePanorama(int widthPx);
