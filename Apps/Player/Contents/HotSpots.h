#pragma once

#include "Apps/Player/Contents/Members.h"
#include "Apps/Player/Contents/HotSpotsAction.h"

#include <memory>
#include <string>

class ZNTDisplayViewController;

/// What a `hot_spots` member and those beside it say; pictures are relative to `folder`.
///
/// Errors: `LineRefused`.
[[nodiscard]] HotSpotsAction readHotSpots(const Members& members, const std::string& folder);

/// Hands hot spots to a controller, their pictures read from their files; one that is missing or
/// broken is null, and has been named in the log. Says once when there are more than can be told
/// apart.
void addHotSpots(ZNTDisplayViewController& controller, const HotSpotsAction& action);

/// Has hot spots and the switch of automatic picking take effect on what is shown. By themselves a
/// picture takes them at its next appearance, and a video takes the switch with the next list only.
void refreshHotSpots(ZNTDisplayViewController& controller);
