#pragma once

#include "Apps/Player/Action.h"
#include "Apps/Player/Members.h"

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
