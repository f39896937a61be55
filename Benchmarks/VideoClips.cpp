#include "Benchmarks/VideoClips.h"

#include "Tests/Support/ChildProcess.h"

#include <filesystem>
#include <stdexcept>
#include <vector>

namespace fs = std::filesystem;

std::string benchmarkClip(int widthPx, int heightPx, int seconds, int megabits) {
    const std::string size = std::to_string(widthPx) + "x" + std::to_string(heightPx);
    const std::string name = "zanto-benchmark-" + size + "-" + std::to_string(seconds) + "s-" +
                             std::to_string(megabits) + "mbit";
    const fs::path path = fs::temp_directory_path() / (name + ".mp4");
    if (fs::exists(path))
        return path;
    // Written under another name until it is complete.
    const fs::path part = fs::temp_directory_path() / (name + ".part.mp4");
    const std::string rate = std::to_string(megabits) + "M";
    const std::vector<std::string> command{"ffmpeg",
                                           "-nostdin",
                                           "-loglevel",
                                           "error",
                                           "-y",
                                           "-f",
                                           "lavfi",
                                           "-i",
                                           "testsrc2=size=" + size +
                                               ":rate=30:duration=" + std::to_string(seconds),
                                           "-vf",
                                           "noise=alls=12:allf=t,format=yuv420p",
                                           "-c:v",
                                           "libx264",
                                           "-preset",
                                           "superfast",
                                           "-profile:v",
                                           "high",
                                           "-g",
                                           "30",
                                           "-b:v",
                                           rate,
                                           "-maxrate",
                                           rate,
                                           "-bufsize",
                                           rate,
                                           "-movflags",
                                           "+faststart",
                                           part};
    if (tests::ChildProcess(command).exitCode() != 0)
        throw std::runtime_error("ffmpeg made no " + part.string());
    fs::rename(part, path);
    return path;
}
