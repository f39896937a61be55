#pragma once

#include "Platform/Foundation/DataTask.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Imaging/Image.h"

#include <functional>
#include <memory>
#include <optional>

/// Downloads and system queries for the player.
///
/// Thread: main.
class ZANTO_EXPORT ZNTUtilities {
public:
    /// Receives an image, or an error, or neither if the data is not an image.
    using ImageCompletion = std::function<void(const platform::ImagePtr& image,
                                               const std::optional<platform::Error>& error)>;

    /// Downloads an image with the shared session and decodes it on a worker thread, within the
    /// decode limits of the process. Data is decoded whatever status the server returns.
    /// Completions run in the order in which the downloads end, each in its own block on the main
    /// queue.
    ///
    /// Owner:  the session owns the task, and the task owns the completion, which is called once.
    /// Errors: returns null and never calls the completion if there is no URL or no completion.
    ///         Data that is not an image is logged with the URL and the cause.
    static std::shared_ptr<platform::DataTask>
    downloadImageWithUrl(const std::optional<platform::URL>& url, ImageCompletion completion);

    /// Whether the system version is 10 or later.
    [[nodiscard]] static bool isIOS10();
};
