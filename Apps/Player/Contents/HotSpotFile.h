#pragma once

#include "Apps/Player/Contents/HotSpotsAction.h"
#include "Platform/Foundation/Result.h"

#include <istream>
#include <memory>
#include <string>

class ZNTDisplayViewController;

/// What `--hot-spots` names: hot spots, and how people pick them.
struct HotSpotFile {
    HotSpotsAction hotSpots;
    bool tapDetection = true;
    bool autoPicking = true;

    /// Gives it to a controller whose view is loaded and has not appeared.
    void applyTo(ZNTDisplayViewController& controller) const;
};

/// Reads one JSON object; docs/hot-spots.md is its manual. Pictures are relative to its folder. An
/// empty path gives null.
///
/// Errors: Missing or Unreadable (the file), Corrupt; the detail names the file, the line of what
///         is not JSON, else the member.
[[nodiscard]] platform::Result<std::shared_ptr<const HotSpotFile>>
readHotSpotFile(const std::string& path);

/// The same from a stream; `name` stands for the file in messages.
[[nodiscard]] platform::Result<std::shared_ptr<const HotSpotFile>>
readHotSpotFile(std::istream& stream, const std::string& name);
