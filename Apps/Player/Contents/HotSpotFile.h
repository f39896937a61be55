#pragma once

#include "Apps/Player/Contents/HotSpotsAction.h"
#include "Platform/Foundation/Result.h"

#include <istream>
#include <memory>
#include <string>

class ZNTDisplayViewController;

/// The contents of a `--hot-spots` file: hot spots, and how they are picked.
struct HotSpotFile {
    HotSpotsAction hotSpots;
    bool tapDetection = true;
    bool autoPicking = true;

    /// Applies the settings to a controller whose view is loaded and has not appeared yet.
    void applyTo(ZNTDisplayViewController& controller) const;
};

/// Reads one JSON object; docs/hot-spots.md describes its members. Image paths are relative to the
/// file's folder. Returns null for an empty path.
///
/// Errors: Missing or Unreadable (the file), Corrupt. The detail names the file and, for a JSON
///         syntax error, the line, otherwise the member.
[[nodiscard]] platform::Result<std::shared_ptr<const HotSpotFile>>
readHotSpotFile(const std::string& path);

/// The same for a stream; messages use `name` as the file's name.
[[nodiscard]] platform::Result<std::shared_ptr<const HotSpotFile>>
readHotSpotFile(std::istream& stream, const std::string& name);
