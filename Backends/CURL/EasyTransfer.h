#pragma once

#include "Backends/CURL/TransferErrors.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Transfer.h"

#include <curl/curl.h>

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// One transfer, wrapping a libcurl easy handle.
///
/// Thread: the caller's for construction, then worker.
class EasyTransfer {
public:
    explicit EasyTransfer(TransferRequest request);

    [[nodiscard]] CURL* easy() const { return easy_.get(); }
    [[nodiscard]] static EasyTransfer* of(CURL* easy);

    /// Returns whether the transfer can be added to libcurl; if not, only `end` may be called.
    [[nodiscard]] bool prepare();
    /// Time left until the transfer counts as stalled; zero or negative once it has stalled.
    [[nodiscard]] Instant timeLeft() const;
    /// Records that the transfer has stalled; `end` then reports this error.
    void giveUp() { refusal_ = stalledError(failed()); }
    /// Reports the result to the requester.
    void end(CURLcode code);

private:
    struct Cleanup {
        void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
    };

    void setOptions();
    void setCallbacks();
    [[nodiscard]] bool receiveHead(std::string_view line);
    [[nodiscard]] int status() const;
    [[nodiscard]] bool answersWithoutBody() const;
    [[nodiscard]] bool receive(const char* bytes, std::size_t count);
    [[nodiscard]] bool refuse(Error why);
    [[nodiscard]] FailedTransfer failed() const;
    [[nodiscard]] Error tooLarge() const;
    [[nodiscard]] std::optional<std::uint64_t> bytesExpected() const;
    void hear() { lastHeard_ = clock_.now(); }

    TransferRequest request_;
    std::unique_ptr<CURL, Cleanup> easy_;
    SystemClock clock_;                // real time: virtual time does not affect the network
    std::optional<Instant> lastHeard_; // nullopt until the connection is established
    std::optional<Error> refusal_;     // why we cancelled the transfer ourselves
    std::size_t headBytes_ = 0;
    bool isInHead_ = false; // within the headers: their empty last line has not arrived
    std::array<char, CURL_ERROR_SIZE> words_{};
    Data body_;
};

} // namespace platform
