#include "Backends/GStreamer/PipelineErrors.h"

#include "Backends/GStreamer/GStreamerLibrary.h"

#include <gio/gio.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

namespace platform {
namespace {

std::optional<Error> contentsRefusal(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return Error{ErrorCode::Unreadable,
                     std::string("the file cannot be opened: ") + std::strerror(errno)};
    std::array<char, 1024> bytes{};
    file.read(bytes.data(), bytes.size());
    if (file.gcount() == 0)
        return Error{ErrorCode::Corrupt, "the file is empty"};
    // Playlists name their segments by relative URLs, which only work with a web server.
    if (isPlaylist({bytes.data(), static_cast<std::size_t>(file.gcount())}))
        return Error{ErrorCode::Unsupported,
                     "a playlist of segments is played from a web server only"};
    return std::nullopt;
}

Error statusError(int status) {
    const std::string number = std::to_string(status);
    if (status == 404 || status == 410)
        return {ErrorCode::Missing, "the server has no such file (status " + number + ")"};
    if (status == 401 || status == 403 || status == 407)
        return {ErrorCode::Unreadable, "the server refuses access (status " + number + ")"};
    if (status < 400 && status != 304)
        return {ErrorCode::Unreadable,
                "the server's redirect leads nowhere (status " + number + ")"};
    return {ErrorCode::Unreadable, "the server answers with status " + number};
}

Error streamError(int code) {
    switch (code) {
    case GST_STREAM_ERROR_TYPE_NOT_FOUND:
    case GST_STREAM_ERROR_WRONG_TYPE:
        return unknownKindError();
    case GST_STREAM_ERROR_CODEC_NOT_FOUND:
        return {ErrorCode::Unsupported, "no decoder for it is installed"};
    case GST_STREAM_ERROR_DEMUX:
        return {ErrorCode::Corrupt, "the file is damaged or cut short"};
    case GST_STREAM_ERROR_DECRYPT:
    case GST_STREAM_ERROR_DECRYPT_NOKEY:
        return {ErrorCode::Unsupported, "it is encrypted"};
    default:
        return {ErrorCode::Corrupt, "the video is damaged"};
    }
}

Error resourceError(int code, const std::string& message) {
    switch (code) {
    case GST_RESOURCE_ERROR_NOT_FOUND:
        return {ErrorCode::Missing, "there is no such file"};
    case GST_RESOURCE_ERROR_READ:
        return {ErrorCode::Unreadable, "the data cannot be read to its end"};
    case GST_RESOURCE_ERROR_SEEK:
        return {ErrorCode::Unreadable, "the server does not hand out parts of the file"};
    default:
        return {ErrorCode::Unreadable, "it cannot be read: " + message};
    }
}

using GIOResult = GStreamerPtr<GError>;

Error reachError(const GError& error) {
    if (error.domain == G_RESOLVER_ERROR)
        return {ErrorCode::Missing, "the server's name is not known"};
    if (error.domain == G_TLS_ERROR)
        return {ErrorCode::Unreadable,
                std::string("the server's certificate is not trusted: ") + error.message};
    if (g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_CONNECTION_REFUSED))
        return {ErrorCode::Unreadable, "the server refuses the connection"};
    if (g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT))
        return {ErrorCode::Unreadable, "the server does not answer in time"};
    return {ErrorCode::Unreadable, std::string("the server cannot be reached: ") + error.message};
}

} // namespace

bool isPlaylist(std::string_view beginning) {
    return beginning.starts_with("#EXTM3U") || beginning.find("<MPD") != std::string_view::npos;
}

std::optional<Error> fileRefusal(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code failure;
    const fs::file_status status = fs::status(path, failure);
    switch (status.type()) {
    case fs::file_type::not_found:
        return Error{ErrorCode::Missing, "there is no such file"};
    case fs::file_type::regular:
        return contentsRefusal(path);
    case fs::file_type::directory:
        return Error{ErrorCode::Unsupported, "it is a folder"};
    case fs::file_type::none:
        return Error{ErrorCode::Unreadable, "the file cannot be opened: " + failure.message()};
    default:
        // Reading a pipe or a device might block forever.
        return Error{ErrorCode::Unsupported, "it is not an ordinary file"};
    }
}

Error unknownKindError() {
    return {ErrorCode::Unsupported, "it is not a video of a known kind"};
}

Error missingDecoderError(const std::string& description) {
    return {ErrorCode::Unsupported, "no decoder for it is installed: " + description};
}

Error pipelineError(const GError& error, const FailureContext& context) {
    if (context.isRemote && context.httpStatus >= 300)
        return statusError(context.httpStatus);
    if (error.domain == GST_STREAM_ERROR && error.code != GST_STREAM_ERROR_FAILED)
        return streamError(error.code);
    // After a lost connection, the source requests the rest of the file, which not every server
    // allows. This cannot be a seek of ours: `Playbin` refuses those beforehand if the server does
    // not support them.
    const bool isSeek = g_error_matches(&error, GST_RESOURCE_ERROR, GST_RESOURCE_ERROR_SEEK) != 0;
    if (context.isRemote && context.isOpen && isSeek)
        return {ErrorCode::Unreadable, "the connection was cut"};
    if (error.domain == GST_RESOURCE_ERROR)
        return resourceError(error.code, error.message);
    if (error.domain == GST_CORE_ERROR && error.code == GST_CORE_ERROR_MISSING_PLUGIN)
        return {ErrorCode::Unsupported, "no decoder for it is installed"};
    if (context.isRemote)
        return {ErrorCode::Unreadable, "the connection was cut, or no answer came in time"};
    return {ErrorCode::Corrupt, "the video is damaged"};
}

std::optional<Error> connectionError(const URL& url) {
    constexpr guint kSeconds = 5;
    const GStreamerPtr<GSocketClient> client(g_socket_client_new());
    const bool isSecure = url.scheme() == "https";
    g_socket_client_set_timeout(client.get(), kSeconds);
    g_socket_client_set_tls(client.get(), isSecure ? TRUE : FALSE);
    GError* failure = nullptr;
    GSocketConnection* connection = g_socket_client_connect_to_uri(
        client.get(), url.absoluteString().c_str(), isSecure ? 443 : 80, nullptr, &failure);
    if (connection) {
        g_object_unref(connection);
        return std::nullopt;
    }
    const GIOResult owned(failure);
    return reachError(*owned);
}

} // namespace platform
