#include "Backends/CURL/EasyTransfer.h"

#include <chrono>
#include <new>
#include <utility>

namespace platform {
namespace {

long inMilliseconds(Instant span) {
    return static_cast<long>(std::chrono::ceil<std::chrono::milliseconds>(span).count());
}

/// Limit for the headers of all responses to one transfer together. Redirects and provisional (1xx)
/// responses count too, because a server may send any number of them.
constexpr std::size_t kMaxHeadBytes = std::size_t{256} << 10U;

Error headTooLarge() {
    return {ErrorCode::TooLarge, "the head of the answer is too large (the limit is " +
                                     std::to_string(kMaxHeadBytes) + " bytes)"};
}

bool isSupported(const URL& url) {
    return url.isFileURL() || url.scheme() == "http" || url.scheme() == "https";
}

} // namespace

EasyTransfer::EasyTransfer(TransferRequest request)
    : request_(std::move(request)), easy_(curl_easy_init()) {
    if (!easy_)
        throw std::bad_alloc();
    setOptions();
    setCallbacks();
}

void EasyTransfer::setOptions() {
    CURL* const easy = easy_.get();
    curl_easy_setopt(easy, CURLOPT_URL, request_.url.absoluteString().c_str());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https,file");
    curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_MAXREDIRS, static_cast<long>(request_.limits.maxRedirects));
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "ZantoPlayerFramework");
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, inMilliseconds(request_.limits.connectTime));
    if (!request_.limits.certificateFile.empty())
        curl_easy_setopt(easy, CURLOPT_CAINFO, request_.limits.certificateFile.c_str());
    // Signal handlers belong to the application.
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    // A DNS lookup can take half a minute, and stopping a transfer must not wait for it.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
}

void EasyTransfer::setCallbacks() {
    CURL* const easy = easy_.get();
    curl_easy_setopt(easy, CURLOPT_PRIVATE, this);
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, words_.data());
    using Take = std::size_t (*)(char*, std::size_t, std::size_t, void*);
    const Take body = [](char* bytes, std::size_t, std::size_t count, void* self) {
        return static_cast<EasyTransfer*>(self)->receive(bytes, count) ? count
                                                                       : CURL_WRITEFUNC_ERROR;
    };
    const Take header = [](char* line, std::size_t, std::size_t count, void* self) {
        return static_cast<EasyTransfer*>(self)->receiveHead({line, count}) ? count : 0;
    };
    using Connected = int (*)(void*, char*, char*, int, int);
    const Connected connected = [](void* self, char*, char*, int, int) {
        static_cast<EasyTransfer*>(self)->hear();
        return CURL_PREREQFUNC_OK;
    };
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, body);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, header);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(easy, CURLOPT_PREREQFUNCTION, connected);
    curl_easy_setopt(easy, CURLOPT_PREREQDATA, this);
}

EasyTransfer* EasyTransfer::of(CURL* easy) {
    char* self = nullptr;
    curl_easy_getinfo(easy, CURLINFO_PRIVATE, &self);
    return reinterpret_cast<EasyTransfer*>(self);
}

bool EasyTransfer::prepare() {
    if (!isSupported(request_.url))
        return refuse({ErrorCode::Unsupported,
                       "the scheme \"" + request_.url.scheme() + "\" is not supported"});
    if (request_.url.isFileURL())
        refusal_ = refusalOfFile(request_.url.path());
    return !refusal_;
}

Instant EasyTransfer::timeLeft() const {
    if (!lastHeard_)
        return Instant::max();
    return *lastHeard_ + request_.limits.stallTime - clock_.now();
}

std::optional<std::uint64_t> EasyTransfer::bytesExpected() const {
    curl_off_t length = -1;
    curl_easy_getinfo(easy_.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
    if (length < 0)
        return std::nullopt;
    return static_cast<std::uint64_t>(length);
}

int EasyTransfer::status() const {
    long status = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    return static_cast<int>(status);
}

/// If a server sends a body after such a response all the same, the next request on the connection
/// would read it as its own response. So the connection is not reused.
bool EasyTransfer::answersWithoutBody() const {
    return status() == 204 || status() == 304 || bytesExpected() == 0U;
}

bool EasyTransfer::receiveHead(std::string_view line) {
    hear();
    headBytes_ += line.size();
    isInHead_ = line != "\r\n" && line != "\n";
    if (!isInHead_)
        curl_easy_setopt(easy_.get(), CURLOPT_FORBID_REUSE, answersWithoutBody() ? 1L : 0L);
    return headBytes_ <= kMaxHeadBytes || refuse(headTooLarge());
}

bool EasyTransfer::receive(const char* bytes, std::size_t count) try {
    hear();
    const auto expected = bytesExpected();
    if (expected.value_or(0) > request_.limits.maxBytes ||
        body_.size() + count > request_.limits.maxBytes)
        return refuse(tooLarge());
    if (body_.empty() && expected)
        body_.reserve(static_cast<std::size_t>(*expected));
    body_.insert(body_.end(), bytes, bytes + count);
    request_.progressed({body_.size(), expected, status()});
    return true;
} catch (const std::bad_alloc&) {
    return refuse(transferError(CURLE_OUT_OF_MEMORY, failed()));
}

bool EasyTransfer::refuse(Error why) {
    refusal_ = std::move(why);
    return false;
}

Error EasyTransfer::tooLarge() const {
    return {ErrorCode::TooLarge, "it is too large (the limit is " +
                                     std::to_string(request_.limits.maxBytes) + " bytes)"};
}

FailedTransfer EasyTransfer::failed() const {
    return {.easy = easy_.get(),
            .limits = request_.limits,
            .bytesReceived = body_.size(),
            .words = words_.data()};
}

void EasyTransfer::end(CURLcode code) {
    // libcurl rejects a header line that is too long before it calls us, and reports it as
    // CURLE_OUT_OF_MEMORY.
    if (code == CURLE_OUT_OF_MEMORY && !refusal_ && lastHeard_ && body_.empty())
        refusal_ = headTooLarge();
    // A server that closes the connection in the middle of the headers has not sent an empty file.
    if (code == CURLE_OK && isInHead_ && body_.empty() && !request_.url.isFileURL())
        code = CURLE_PARTIAL_FILE;
    if (refusal_)
        return request_.ended(*std::move(refusal_));
    if (code != CURLE_OK)
        return request_.ended(transferError(code, failed()));
    if (body_.empty()) // no body arrived, so progress was never reported
        request_.progressed({0, bytesExpected(), status()});
    request_.ended(std::move(body_));
}

} // namespace platform
