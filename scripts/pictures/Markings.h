#pragma once

#include "Picture.h"

namespace pictures {

/// Draws what tells a person which way is what: the four headings, degrees along the horizon, and
/// pitch marks above and below the headings.
void drawMarkings(Picture& picture);

} // namespace pictures
