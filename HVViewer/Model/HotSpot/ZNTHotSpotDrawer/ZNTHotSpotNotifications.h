#pragma once

/// Around a picking frame: the content is drawn in picking colours between the two.
inline constexpr const char* ZNTHotSpotDrawerDisableDrawing = "ZNTHotSpotDrawerDisableDrawing";
inline constexpr const char* ZNTHotSpotDrawerEnableDrawing = "ZNTHotSpotDrawerEnableDrawing";

/// A hot spot was tapped or looked at. Its name (a string, perhaps empty), its index (an integer)
/// and whether it was a tap (a boolean) come under the keys.
inline constexpr const char* ZNTHotSpotDrawerDetectHotSpotSelection =
    "ZNTHotSpotDrawerDetectHotSpotSelection";
inline constexpr const char* ZNTHotSpotDrawerHotSpotNameKey = "ZNTHotSpotDrawerHotSpotNameKey";
inline constexpr const char* ZNTHotSpotDrawerHotSpotIndexKey = "ZNTHotSpotDrawerHotSpotIndexKey";
inline constexpr const char* ZNTHotSpotDrawerTapKey = "ZNTHotSpotDrawerTapKey";
