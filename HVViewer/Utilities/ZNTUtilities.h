#pragma once

#include "Platform/Foundation/DataTask.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Imaging/Image.h"

#include <functional>
#include <memory>
#include <optional>

/// What the player needs of the network and of the system.
///
/// Thread: main.
class ZANTO_EXPORT ZNTUtilities {
public:
    /// A picture, or an error, or neither for bytes that are no picture.
    using ImageCompletion = std::function<void(const platform::ImagePtr& image,
                                               const std::optional<platform::Error>& error)>;

    /// Downloads a picture with the shared session and decodes it away from the main thread, within
    /// the process's decode limits. Whatever status a server gives, what comes is decoded. Several
    /// complete in the order in which their downloads ended.
    ///
    /// Owner:  the session has the task, and the task has the completion, which is called once, in
    ///         a turn of its own.
    /// Errors: null, and no call ever, without an address or a completion. Bytes that are no
    ///         picture leave one log line that names the address and the cause.
    static std::shared_ptr<platform::DataTask>
    downloadImageWithUrl(const std::optional<platform::URL>& url, ImageCompletion completion);

    /// Whether the system is of version 10 or later.
    [[nodiscard]] static bool isIOS10();
};
