#include "Benchmarks/Panoramas.h"
#include "Benchmarks/Soak/Moves.h"
#include "Benchmarks/Soak/Scene.h"

#include <limits>

using platform::URL;

namespace {

URL file(const Scene& scene, const std::string& name) {
    return URL::fileURLWithPath(scene.media().pathOf(name));
}

URL remote(const Scene& scene, const std::string& name, Media::Delivery delivery) {
    return URL::URLWithString(scene.media().urlOf(name, delivery)).value();
}

/// Replaces the player in three of four cases, because an image that is shown can only be replaced
/// by another controller.
void makeRoom(Scene& scene) {
    if (!scene.dice().oneIn(4))
        scene.replacePlayer();
}

void showPicture(Scene& scene) {
    makeRoom(scene);
    scene.player().prepareImageWithUrl(file(scene, scene.dice().of(scene.media().pictures)));
    if (scene.dice().either())
        scene.appear();
}

void showPictureInMemory(Scene& scene) {
    makeRoom(scene);
    scene.player().prepareImage(
        std::make_shared<platform::Image>(makePanorama(2 * scene.dice().whole(1, 256))));
    scene.appear();
}

void showBrokenPicture(Scene& scene) {
    makeRoom(scene);
    scene.player().prepareImageWithUrl(file(scene, scene.dice().of(scene.media().brokenPictures)));
}

void download(Scene& scene, const Media::Names& names, Media::Delivery delivery) {
    makeRoom(scene);
    scene.player().prepareImageWithUrl(remote(scene, scene.dice().of(names), delivery));
}

void downloadPicture(Scene& scene) {
    download(scene, scene.media().pictures, Media::Delivery::Quick);
}

void downloadSlowly(Scene& scene) {
    download(scene, scene.media().pictures, Media::Delivery::Slow);
}

void downloadBroken(Scene& scene) {
    const bool isCut = scene.dice().either();
    download(scene, isCut ? scene.media().pictures : scene.media().brokenPictures,
             isCut ? Media::Delivery::Cut : Media::Delivery::Quick);
}

void prepareVideo(Scene& scene) {
    scene.player().prepareVideoWithUrl(file(scene, scene.dice().of(scene.media().videos)));
}

void prepareRemoteVideo(Scene& scene) {
    const auto delivery = scene.dice().either() ? Media::Delivery::Quick : Media::Delivery::Slow;
    scene.player().prepareVideoWithUrl(
        remote(scene, scene.dice().of(scene.media().videos), delivery));
}

void prepareBrokenVideo(Scene& scene) {
    const std::string& name = scene.dice().of(scene.media().brokenVideos);
    if (scene.dice().oneIn(3))
        scene.player().prepareVideoWithUrl(remote(scene, name, Media::Delivery::Quick));
    else
        scene.player().prepareVideoWithUrl(file(scene, name));
}

/// While the first content is loading, requests a second one, and perhaps another kind after that.
void changeOnesMind(Scene& scene) {
    downloadSlowly(scene);
    prepareRemoteVideo(scene);
    if (scene.dice().either())
        prepareVideo(scene);
    if (scene.dice().either())
        downloadPicture(scene);
}

void play(Scene& scene) {
    scene.player().play();
}

void pauseVideo(Scene& scene) {
    scene.player().pause();
}

void seek(Scene& scene) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const int times = scene.dice().whole(1, 4);
    for (int i = 0; i < times; ++i)
        scene.player().seekToTime(scene.dice().oneIn(12) ? nan : scene.dice().real(-0.2, 2.5));
}

void changeVolume(Scene& scene) {
    scene.player().setPlayerVolume(scene.dice().real(-0.5, 1.5));
}

void reload(Scene& scene) {
    scene.player().reloadContent();
}

void handOver(Scene& scene) {
    scene.player().prepareDisplayView();
}

} // namespace

Moves contentMoves() {
    return {{"picture", 6, showPicture},
            {"picture in memory", 2, showPictureInMemory},
            {"broken picture", 2, showBrokenPicture},
            {"download", 4, downloadPicture},
            {"slow download", 2, downloadSlowly},
            {"broken download", 2, downloadBroken},
            {"video", 8, prepareVideo},
            {"remote video", 3, prepareRemoteVideo},
            {"broken video", 2, prepareBrokenVideo},
            {"change of mind", 2, changeOnesMind},
            {"play", 5, play},
            {"pause", 3, pauseVideo},
            {"seek", 5, seek},
            {"volume", 2, changeVolume},
            {"reload", 2, reload},
            {"hand over", 2, handOver}};
}
