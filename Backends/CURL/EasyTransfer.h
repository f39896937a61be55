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

/// One transfer as libcurl has it.
///
/// Thread: made on any, then the service's own.
class EasyTransfer {
public:
    explicit EasyTransfer(TransferRequest request);

    [[nodiscard]] CURL* easy() const { return easy_.get(); }
    [[nodiscard]] static EasyTransfer* of(CURL* easy);

    /// Whether it may be handed to libcurl; if not, it can only be ended.
    [[nodiscard]] bool prepare();
    /// Until it has stalled for too long; none or less: it has.
    [[nodiscard]] Instant timeLeft() const;
    /// Notes that it has, as the reason of its end.
    void giveUp() { refusal_ = stalledError(failed()); }
    /// Tells how it ended.
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
    SystemClock clock_;                // of the network, which no virtual time stops
    std::optional<Instant> lastHeard_; // none until a connection stands
    std::optional<Error> refusal_;     // why we gave up, before libcurl did
    std::size_t headBytes_ = 0;
    bool isInHead_ = false; // a line of it has come, and the empty one has not
    std::array<char, CURL_ERROR_SIZE> words_{};
    Data body_;
};

} // namespace platform
