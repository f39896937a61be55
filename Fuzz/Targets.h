#pragma once

#include <cstdint>
#include <span>

/// The functions that parse external input, each with the properties that must hold for every
/// input.
///
/// Thread: main.
/// Errors: `PropertyBroken`; the sanitizers detect all other errors.
namespace fuzz {

using Bytes = std::span<const std::uint8_t>;

/// An action script.
void checkActionScript(Bytes input);
/// A recording of a device's attitude.
void checkAttitudeTrace(Bytes input);
/// A file of hot spots.
void checkHotSpots(Bytes input);
/// An image file of any format, known or unknown.
void checkPicture(Bytes input);
/// A URL and a path.
void checkURL(Bytes input);

} // namespace fuzz
