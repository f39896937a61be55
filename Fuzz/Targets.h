#pragma once

#include <cstdint>
#include <span>

/// What takes input from outside, each with what must be true of it whatever the input.
///
/// Thread: main.
/// Errors: `PropertyBroken`; whatever else goes wrong is for a sanitizer to see.
namespace fuzz {

using Bytes = std::span<const std::uint8_t>;

/// A script of actions.
void checkActionScript(Bytes input);
/// A recording of a device's attitude.
void checkAttitudeTrace(Bytes input);
/// A file of hot spots.
void checkHotSpots(Bytes input);
/// A picture file of any format, known or not.
void checkPicture(Bytes input);
/// An address, and a path.
void checkURL(Bytes input);

} // namespace fuzz
