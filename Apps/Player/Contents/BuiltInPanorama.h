#pragma once

#include "Platform/Imaging/Image.h"

/// The panorama that is shown if no input is given.
[[nodiscard]] platform::ImagePtr builtInPanorama();
