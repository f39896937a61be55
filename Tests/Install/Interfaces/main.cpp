// Uses what the library offers beside its controller, through the one header that applications
// include: the notifications, the delegates, the exported functions, constants and picture
// conveniences. It leaves with 0 if everything is as documented, else with the number of the check.
#include <HVViewer/ZantoPlayerFramework.h>
#include <Hosts/Headless/HeadlessHost.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Interactions : InterractorDelegate {
    int updates = 0;
    void matrixUpdated() override { ++updates; }
};

struct Frames : StreamerDelegate {
    int frames = 0;
    void hasNewFrame(ZNTStreamer&, const platform::PixelBufferPtr&) override { ++frames; }
};

/// What the notifications said, in order.
struct Heard {
    std::vector<std::string> names;
    std::string spot;
    std::int64_t index = -1;
    bool isTap = false;

    void observeWith(const std::shared_ptr<platform::Object>& observer) {
        auto& center = platform::NotificationCenter::defaultCenter();
        for (const char* name : {ZNTHotSpotDrawerDisableDrawing, ZNTHotSpotDrawerEnableDrawing})
            center.addObserver(observer, name,
                               [this](const auto& posted) { names.push_back(posted.name); });
        center.addObserver(observer, ZNTHotSpotDrawerDetectHotSpotSelection,
                           [this](const platform::Notification& posted) {
                               names.push_back(posted.name);
                               spot = posted.value<std::string>(ZNTHotSpotDrawerHotSpotNameKey);
                               index = posted.value<std::int64_t>(ZNTHotSpotDrawerHotSpotIndexKey);
                               isTap = posted.value<bool>(ZNTHotSpotDrawerTapKey);
                           });
    }
};

void check(int number, bool holds) {
    if (!holds)
        std::exit(number);
}

void checkFunctionsAndConstants() {
    check(1, ViewAngle == 70.0 && ViewAngleLittlePlanet == 105.0 && NearZ > 0 && FarZ() > NearZ);
    check(2, VelocityDeltaCoef > 0 && VelocityDivideValue == 15.0 && VelocityMinValue == 0.05);
    check(3, DegToRad(180) > 3.14 && screenWidth() == 320.0F && screenHeight() == 180.0F);
    check(4, isIdentityMatrix(GLKMatrix4Identity) && !containsNaN(GLKMatrix4Identity));
    float aboutX = 1, aboutY = 1, aboutZ = 1;
    getRotationFromGLKMat4(&aboutY, &aboutX, &aboutZ, GLKQuaternionMake(0, 0, 0, 1));
    check(5, aboutX == 0 && aboutY == 0 && aboutZ == 0);
    check(6, ZantoPlayerFrameworkVersionNumber == 1.0 && ZantoPlayerFrameworkVersionString[0] != 0);
    Dlog("the log takes %d argument", 1);
}

void checkPictures() {
    const auto red = imageWithColor(platform::Color{1, 0, 0, 1}, {4, 4});
    check(7, red && imageWithColor(platform::Color{1, 0, 0, 1}));
    check(8, pickPixelAtX(*red, 1, 1).v[0] == 1.0F);
    check(9, tintedImageWithColor(*red, platform::kBlackColor, platform::BlendMode::Normal) !=
                 nullptr);
    check(10, screenShotFromGl() != nullptr);
}

} // namespace

int main() {
    auto host = zanto::HeadlessHost::create({{320, 180}});
    check(11, host.ok());
    checkFunctionsAndConstants();
    checkPictures();

    const auto delegate = std::make_shared<Interactions>();
    static_cast<InterractorDelegate&>(*delegate).matrixUpdated();
    static_cast<InterractorDelegate&>(*delegate).interractorDidDetectAction(0);
    check(12, delegate->updates == 1 && Frames().frames == 0);

    Heard heard;
    auto observer = platform::make<platform::Object>();
    heard.observeWith(observer);
    const auto player = platform::make<ZNTDisplayViewController>();
    const auto spot = ZNTHotSpot::hotSpotWithTextureImage(
        imageWithColor(platform::Color{1, 0, 0, 1}, {8, 8}), 0.0F, 0.0F);
    spot->setHotSpotName("door");
    player->prepareImage(imageWithColor(platform::Color{0, 0, 1, 1}, {64, 32}));
    player->addHotSpots({spot}, nullptr);
    player->setEnableHotSpotTapDetection(true);
    zanto::EmbeddedHost& embedded = host.value()->embedded();
    embedded.setRootViewController(player);
    embedded.appear();
    host.value()->settle();
    for (const auto phase : {platform::TouchPhase::Down, platform::TouchPhase::Up})
        embedded.touch({phase, 1, {160, 90}, platform::TouchKind::Finger, embedded.now()});
    host.value()->settle();
    check(13, heard.names == std::vector<std::string>{ZNTHotSpotDrawerDisableDrawing,
                                                      ZNTHotSpotDrawerEnableDrawing,
                                                      ZNTHotSpotDrawerDetectHotSpotSelection});
    check(14, heard.spot == "door" && heard.index == 0 && heard.isTap);

    platform::NotificationCenter::defaultCenter().removeObserver(observer.get());
    platform::NotificationCenter::defaultCenter().post(ZNTHotSpotDrawerEnableDrawing);
    check(15, heard.names.size() == 3);
    embedded.setRootViewController(nullptr);
    return 0;
}
