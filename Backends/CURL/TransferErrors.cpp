#include "Backends/CURL/TransferErrors.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <memory>
#include <system_error>

namespace platform {
namespace {

std::string inSeconds(Instant span) {
    const auto tenths = std::chrono::round<std::chrono::duration<long, std::deci>>(span).count();
    const std::string whole = std::to_string(tenths / 10);
    return (tenths % 10 == 0 ? whole : whole + "." + std::to_string(tenths % 10)) + " s";
}

/// Returns one part of the effective URL, after redirects.
std::string partOf(CURL* easy, CURLUPart which) {
    const char* address = nullptr;
    curl_easy_getinfo(easy, CURLINFO_EFFECTIVE_URL, &address);
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), curl_url_cleanup);
    char* text = nullptr;
    if (!url || address == nullptr ||
        curl_url_set(url.get(), CURLUPART_URL, address, CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK ||
        curl_url_get(url.get(), which, &text, 0) != CURLUE_OK)
        return {};
    std::string part = text;
    curl_free(text);
    return part;
}

/// The quoted host name, with the port if the URL has one.
std::string hostOf(const FailedTransfer& transfer) {
    const std::string port = partOf(transfer.easy, CURLUPART_PORT);
    return "\"" + partOf(transfer.easy, CURLUPART_HOST) + (port.empty() ? "" : ":" + port) + "\"";
}

Error connectionError(const FailedTransfer& transfer) {
    long cause = 0;
    curl_easy_getinfo(transfer.easy, CURLINFO_OS_ERRNO, &cause);
    const std::string host = hostOf(transfer);
    if (cause == ECONNREFUSED)
        return {ErrorCode::Unreadable, host + " refuses the connection"};
    const std::string why =
        cause == 0 ? "" : " (" + std::generic_category().message(static_cast<int>(cause)) + ")";
    return {ErrorCode::Unreadable, host + " cannot be reached" + why};
}

Error cutShort(const FailedTransfer& transfer) {
    return {ErrorCode::Unreadable, "the connection was cut short after " +
                                       std::to_string(transfer.bytesReceived) + " bytes"};
}

/// Only a redirect can lead to an unsupported scheme, because the first URL is checked beforehand.
/// libcurl also reports this code when a server's response is not HTTP: it takes the response for
/// HTTP/0.9, which is not supported.
Error unsupported(const FailedTransfer& transfer) {
    // In this case the effective URL is still the one that redirected.
    if (transfer.words.find("redirect") != std::string_view::npos)
        return {ErrorCode::Unsupported,
                "it is redirected to a scheme that is neither http nor https"};
    const std::string scheme = partOf(transfer.easy, CURLUPART_SCHEME);
    if (scheme == "http" || scheme == "https")
        return {ErrorCode::Corrupt, "the answer is not HTTP"};
    return {ErrorCode::Unsupported,
            "it is redirected to the scheme \"" + scheme + "\", which is neither http nor https"};
}

} // namespace

Error transferError(CURLcode code, const FailedTransfer& transfer) {
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return {ErrorCode::Missing, "the host " + hostOf(transfer) + " is not found"};
    case CURLE_COULDNT_CONNECT:
        return connectionError(transfer);
    case CURLE_OPERATION_TIMEDOUT:
        // Connecting is the only step for which libcurl enforces a timeout; stalls are detected by
        // `CURLTransferService`.
        return {ErrorCode::Unreadable, hostOf(transfer) + " timed out: no connection within " +
                                           inSeconds(transfer.limits.connectTime)};
    case CURLE_PEER_FAILED_VERIFICATION:
        return {ErrorCode::Unreadable,
                "the certificate of " + hostOf(transfer) + " is not trusted"};
    case CURLE_SSL_CONNECT_ERROR:
        return {ErrorCode::Unreadable,
                "no secure connection to " + hostOf(transfer) + " can be made"};
    case CURLE_SSL_CACERT_BADFILE:
        return {ErrorCode::Unavailable, "the trusted certificates cannot be read"};
    case CURLE_TOO_MANY_REDIRECTS:
        return {ErrorCode::Unreadable, "it is redirected more than " +
                                           std::to_string(transfer.limits.maxRedirects) + " times"};
    case CURLE_UNSUPPORTED_PROTOCOL:
        return unsupported(transfer);
    case CURLE_URL_MALFORMAT:
        return {ErrorCode::Unsupported, "the address is malformed"};
    case CURLE_RECV_ERROR:
        if (transfer.words.find("chunked-encoding") != std::string_view::npos)
            return {ErrorCode::Corrupt, "the chunks of the answer are damaged"};
        return cutShort(transfer);
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
        return cutShort(transfer);
    case CURLE_WEIRD_SERVER_REPLY:
        return {ErrorCode::Corrupt, "the answer is not HTTP"};
    case CURLE_FILE_COULDNT_READ_FILE:
        return {ErrorCode::Unreadable, "it cannot be read"};
    case CURLE_OUT_OF_MEMORY:
        return {ErrorCode::TooLarge, "there is no memory for it"};
    default:
        return {ErrorCode::Unreadable,
                std::string("the transfer failed (") + curl_easy_strerror(code) + ")"};
    }
}

Error stalledError(const FailedTransfer& transfer) {
    return {ErrorCode::Unreadable, hostOf(transfer) + " timed out: nothing came for " +
                                       inSeconds(transfer.limits.stallTime)};
}

std::optional<Error> refusalOfFile(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code cause;
    const fs::file_status status = fs::status(path, cause);
    switch (status.type()) {
    case fs::file_type::regular:
        return std::nullopt;
    case fs::file_type::not_found:
        return Error{ErrorCode::Missing, "it is missing (" + cause.message() + ")"};
    case fs::file_type::directory:
        return Error{ErrorCode::Unreadable, "it is a directory"};
    case fs::file_type::none:
    case fs::file_type::unknown:
        return Error{ErrorCode::Unreadable, "it cannot be read (" + cause.message() + ")"};
    default:
        return Error{ErrorCode::Unreadable, "it is not a regular file"};
    }
}

} // namespace platform
