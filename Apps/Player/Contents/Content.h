#pragma once

#include "Apps/Player/Output/TracedController.h"
#include "Apps/Player/Contents/ContentAction.h"
#include "Platform/Foundation/URL.h"

#include <optional>
#include <string>

/// The address that a command line or a script names: as it stands, or a file's. Errors: none for
/// what looks like an address and is not one.
[[nodiscard]] std::optional<platform::URL> urlOf(const std::string& input);

/// Whether it is to be shown as a picture or to be played: by its ending, and where that says
/// nothing by the first bytes of the file. An address without a telling ending is played.
[[nodiscard]] ContentAction::Kind kindOf(const std::string& input);

/// What people call it: the last part of its path.
[[nodiscard]] std::string nameOfContent(const std::string& input);

/// Hands a controller what the command line names: a file or an address, the built-in panorama when
/// it is empty. What an address or a video leads to comes with later turns of the host.
void prepareContent(TracedController& controller, const std::string& input);

enum class ContentState { Pending, Open, Failed };

/// What has become of it so far. A failure has been told to the person.
[[nodiscard]] ContentState stateOfContent(const TracedController& controller,
                                          const std::string& input);
