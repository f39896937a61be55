#pragma once

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <string>
#include <vector>

/// What there is to be shown: files of a folder of its own, and a server that hands them out.
///
/// The server is this program once more, started with `--serve FOLDER`: its connections, threads
/// and memory are none of the player's, and are not to be counted among them.
class Media {
public:
    /// Errors: an exception where `ffmpeg` is missing, or the server does not start.
    explicit Media(const std::string& program);

    using Names = std::vector<std::string>;
    Names pictures;
    Names videos;
    /// Cut short, empty, of another kind; and not there at all.
    Names brokenPictures;
    Names brokenVideos;
    /// Of the application's bundle.
    Names icons;
    Names brokenIcons;

    [[nodiscard]] std::string pathOf(const std::string& name) const { return folder_.pathOf(name); }
    [[nodiscard]] const std::string& folder() const { return folder_.path(); }
    /// At once, in drips, or cut off after the first bytes.
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

/// Serves the folder until the process is ended; its address goes to standard output.
[[noreturn]] void serveMedia(const std::string& folder);
