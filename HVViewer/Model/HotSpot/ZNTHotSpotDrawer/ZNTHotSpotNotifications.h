#pragma once

/// Posted before and after a picking frame. The content is drawn in picking colours in between.
inline constexpr const char* ZNTHotSpotDrawerDisableDrawing = "ZNTHotSpotDrawerDisableDrawing";
inline constexpr const char* ZNTHotSpotDrawerEnableDrawing = "ZNTHotSpotDrawerEnableDrawing";

/// A hot spot was tapped, or automatic picking found it. The keys hold its name (a string, possibly
/// empty), its index (an integer) and whether it was a tap (a boolean).
inline constexpr const char* ZNTHotSpotDrawerDetectHotSpotSelection =
    "ZNTHotSpotDrawerDetectHotSpotSelection";
inline constexpr const char* ZNTHotSpotDrawerHotSpotNameKey = "ZNTHotSpotDrawerHotSpotNameKey";
inline constexpr const char* ZNTHotSpotDrawerHotSpotIndexKey = "ZNTHotSpotDrawerHotSpotIndexKey";
inline constexpr const char* ZNTHotSpotDrawerTapKey = "ZNTHotSpotDrawerTapKey";
