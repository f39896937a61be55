#pragma once

#include "Platform/Imaging/Image.h"

/// A panorama of gradients and noise, the same every time.
[[nodiscard]] platform::PixelStorage makePanorama(int widthPx);
