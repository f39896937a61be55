#pragma once

#include "Platform/Imaging/Image.h"

/// The panorama that is shown when no other is given.
[[nodiscard]] platform::ImagePtr builtInPanorama();
