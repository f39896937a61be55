#pragma once

/// Around a picking frame: the content is drawn in picking colours between the two.
inline constexpr const char* ZNTHotSpotDrawerDisableDrawing = "ZNTHotSpotDrawerDisableDrawing";
inline constexpr const char* ZNTHotSpotDrawerEnableDrawing = "ZNTHotSpotDrawerEnableDrawing";
