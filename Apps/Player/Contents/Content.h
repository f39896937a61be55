#pragma once

#include "Apps/Player/Contents/ContentAction.h"
#include "Apps/Player/Output/TracedController.h"
#include "Platform/Foundation/URL.h"

#include <optional>
#include <string>

/// The URL of an input from the command line or a script, which is a URL or a file path. Errors:
/// nullopt if the input contains "://" but is not a valid URL.
[[nodiscard]] std::optional<platform::URL> urlOf(const std::string& input);

/// Decides by the file extension whether the input is an image or a video; if the extension is
/// unknown, by the first bytes of the file. A remote URL without a known extension is a video.
[[nodiscard]] ContentAction::Kind kindOf(const std::string& input);

/// The display name: the last part of the path.
[[nodiscard]] std::string nameOfContent(const std::string& input);

/// Sets the controller's content to a file or a URL; to the built-in panorama if `input` is empty.
/// Remote content and videos load during later iterations of the host's loop.
void prepareContent(TracedController& controller, const std::string& input);

enum class ContentState { Pending, Open, Failed };

/// The loading state of the content. A failure is also printed to standard error.
[[nodiscard]] ContentState stateOfContent(const TracedController& controller,
                                          const std::string& input);
