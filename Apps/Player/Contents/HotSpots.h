#pragma once

#include "Apps/Player/Contents/HotSpotsAction.h"
#include "Apps/Player/Contents/Members.h"

#include <memory>
#include <string>

class ZNTDisplayViewController;

/// Reads the `hot_spots` member and the picking members beside it; image paths are relative to
/// `folder`.
///
/// Errors: `LineRefused`.
[[nodiscard]] HotSpotsAction readHotSpots(const Members& members, const std::string& folder);

/// Reads the images of the hot spots and adds the hot spots to a controller. A missing or damaged
/// image becomes null and has been logged. Prints a warning if there are more hot spots than
/// picking colours.
void addHotSpots(ZNTDisplayViewController& controller, const HotSpotsAction& action);

/// Applies the controller's hot spots and its automatic-picking setting to the content that is
/// shown. Without this call, an image applies both when it next appears, and a video applies the
/// setting with the next list only.
void refreshHotSpots(ZNTDisplayViewController& controller);
