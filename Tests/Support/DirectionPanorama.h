#pragma once

#include "HVViewer/Model/DisplayMode.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Imaging/Image.h"

/// A direction in the world of a panorama: `east` is to the right of its centre, `north` straight
/// ahead, `up` its top edge.
struct WorldDirection {
    double east = 0;
    double north = 0;
    double up = 0;
};

/// A panorama whose every colour says which way its pixel lies: red goes by the east, green by the
/// north, blue by the height, each in a steep zigzag.
[[nodiscard]] platform::ImagePtr directionPanorama(int widthPx);

/// The picture that a mode shows of that panorama before anybody has moved the camera, worked out
/// in double precision from what a person should see: no matrices, no mesh. Transparent where the
/// answer hangs on a fraction of a pixel or where a watermark lies over it.
///
/// `size` is in points; the mode is one of the single views.
[[nodiscard]] platform::ImagePtr expectedDirections(DisplayMode mode, platform::Size size,
                                                    double scale);
