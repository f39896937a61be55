#pragma once

#include "Picture.h"

namespace pictures {

/// Draws marks for orientation: the four headings, degrees along the horizon, and pitch marks above
/// and below the headings.
void drawMarkings(Picture& picture);

} // namespace pictures
