#pragma once

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <string>
#include <vector>

/// The content to show: files in a temporary folder, and a server that serves them.
///
/// The server is a second process of this program, started with `--serve FOLDER`, so that its
/// connections, threads and memory are not counted as the player's.
class Media {
public:
    /// Errors: throws an exception if `ffmpeg` is missing or the server does not start.
    explicit Media(const std::string& program);

    using Names = std::vector<std::string>;
    Names pictures;
    Names videos;
    /// Truncated, empty, of another format, or missing.
    Names brokenPictures;
    Names brokenVideos;
    /// Names in the application's bundle.
    Names icons;
    Names brokenIcons;

    [[nodiscard]] std::string pathOf(const std::string& name) const { return folder_.pathOf(name); }
    [[nodiscard]] const std::string& folder() const { return folder_.path(); }
    /// At full speed, in small pieces, or cut off after the first bytes.
    enum class Delivery { Quick, Slow, Cut };
    [[nodiscard]] std::string urlOf(const std::string& name, Delivery delivery) const;

private:
    void addPictures();
    void addVideos();
    void addIcons();

    tests::TemporaryFolder folder_;
    tests::ChildProcess server_;
    std::string address_;
};

/// Serves the folder until the process is killed; prints its URL to standard output.
[[noreturn]] void serveMedia(const std::string& folder);
