#include "Tests/Support/HttpAnswer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace tests {
namespace {

constexpr std::size_t kLongestPiece = 65536;

const char* reasonOf(int status) {
    constexpr std::array<std::pair<int, const char*>, 7> reasons{{{200, "OK"},
                                                                  {206, "Partial Content"},
                                                                  {302, "Found"},
                                                                  {404, "Not Found"},
                                                                  {405, "Method Not Allowed"},
                                                                  {416, "Range Not Satisfiable"},
                                                                  {500, "Internal Server Error"}}};
    const auto* const found = std::find_if(
        reasons.begin(), reasons.end(), [&](const auto& reason) { return reason.first == status; });
    return found == reasons.end() ? "Other" : found->second;
}

std::string typeOf(const std::string& target) {
    constexpr std::array<std::pair<std::string_view, const char*>, 11> types{
        {{".jpg", "image/jpeg"},
         {".png", "image/png"},
         {".webp", "image/webp"},
         {".mp4", "video/mp4"},
         {".m4s", "video/iso.segment"},
         {".webm", "video/webm"},
         {".mkv", "video/x-matroska"},
         {".ts", "video/mp2t"},
         {".m3u8", "application/vnd.apple.mpegurl"},
         {".txt", "text/plain"},
         {".html", "text/html"}}};
    const std::string path = target.substr(0, target.find('?'));
    const auto* const found = std::find_if(
        types.begin(), types.end(), [&](const auto& type) { return path.ends_with(type.first); });
    return found == types.end() ? "application/octet-stream" : found->second;
}

std::optional<std::size_t> numberIn(std::string_view text) {
    std::size_t number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return number;
}

} // namespace

HttpAnswer::HttpAnswer(HttpConnection& connection, const HttpRequest& request,
                       const HttpReply& reply, std::function<bool()> stall)
    : connection_(connection), request_(request), reply_(reply), stall_(std::move(stall)),
      framing_(reply.framing), status_(reply.status), length_(reply.body.size()) {
    if (reply.isEndless && framing_ == HttpReply::Framing::Length)
        framing_ = HttpReply::Framing::UntilClose;
    if (reply.takesRanges && status_ == 200 && !reply.isEndless)
        chooseRange();
}

/// One range of bytes: "bytes=2-5", "bytes=2-", "bytes=-5"; anything else is the whole.
void HttpAnswer::chooseRange() {
    constexpr std::string_view unit = "bytes=";
    const std::string range = request_.range();
    const auto dash = range.find('-');
    if (!range.starts_with(unit) || dash == std::string::npos)
        return;
    const auto first = numberIn(std::string_view(range).substr(unit.size(), dash - unit.size()));
    const auto last = numberIn(std::string_view(range).substr(dash + 1));
    if (!first && !last)
        return;
    const std::size_t size = reply_.body.size();
    begin_ = first ? *first : size - std::min(*last, size);
    const bool isThere = begin_ < size && (!first || !last || *last >= *first);
    status_ = isThere ? 206 : 416;
    const std::size_t end = first && last ? std::min(*last + 1, size) : size;
    length_ = isThere ? end - begin_ : 0;
}

bool HttpAnswer::endsConnection() const {
    return framing_ == HttpReply::Framing::UntilClose || reply_.toldLength ||
           request_.header("connection") == "close";
}

std::string HttpAnswer::head() const {
    std::string text = "HTTP/1.1 " + std::to_string(status_) + " " + reasonOf(status_) + "\r\n";
    const auto add = [&text](const std::string& name, const std::string& value) {
        text += name + ": " + value + "\r\n";
    };
    add("Content-Type", reply_.contentType.empty() ? typeOf(request_.target) : reply_.contentType);
    if (framing_ == HttpReply::Framing::Length)
        add("Content-Length", std::to_string(reply_.toldLength.value_or(length_)));
    if (framing_ == HttpReply::Framing::Chunked)
        add("Transfer-Encoding", "chunked");
    if (reply_.takesRanges)
        add("Accept-Ranges", "bytes");
    const std::string size = std::to_string(reply_.body.size());
    if (status_ == 206)
        add("Content-Range", "bytes " + std::to_string(begin_) + "-" +
                                 std::to_string(begin_ + length_ - 1) + "/" + size);
    if (status_ == 416)
        add("Content-Range", "bytes */" + size);
    if (endsConnection())
        add("Connection", "close");
    for (const auto& [name, value] : reply_.headers)
        add(name, value);
    return text + "\r\n";
}

bool HttpAnswer::send() {
    if (reply_.script) {
        reply_.script(connection_);
        return false;
    }
    if (reply_.isSilent && !stall_())
        return false;
    if (!connection_.send(head()))
        return false;
    if (request_.method == "HEAD")
        return !endsConnection();
    return sendBody() && !endsConnection();
}

bool HttpAnswer::sendBody() {
    const char* const bytes = reinterpret_cast<const char*>(reply_.body.data()) + begin_;
    for (std::size_t sent = 0;;) {
        if (reply_.stallAfter == sent && !stall_())
            return false;
        if (reply_.cutAfter == sent)
            return false;
        if (length_ == 0 || (sent >= length_ && !reply_.isEndless))
            break;
        const std::size_t piece = nextPiece(sent);
        if (!sendPiece({bytes + sent % length_, piece}))
            return false;
        sent += piece;
        if (reply_.dripBytes > 0 &&
            connection_.wait(reply_.dripPause) == HttpConnection::Wait::Gone)
            return false;
    }
    return framing_ != HttpReply::Framing::Chunked || connection_.send("0\r\n\r\n");
}

std::size_t HttpAnswer::nextPiece(std::size_t sent) const {
    std::size_t piece = std::min(kLongestPiece, length_ - sent % length_);
    if (reply_.dripBytes > 0)
        piece = std::min(piece, reply_.dripBytes);
    for (const auto& stop : {reply_.stallAfter, reply_.cutAfter}) {
        if (stop && *stop > sent)
            piece = std::min(piece, *stop - sent);
    }
    return piece;
}

bool HttpAnswer::sendPiece(std::string_view piece) {
    if (framing_ != HttpReply::Framing::Chunked)
        return connection_.send(piece);
    std::array<char, 16> size{};
    const auto end = std::to_chars(size.data(), size.data() + size.size(), piece.size(), 16).ptr;
    return connection_.send(std::string(size.data(), end) + "\r\n" + std::string(piece) + "\r\n");
}

} // namespace tests
