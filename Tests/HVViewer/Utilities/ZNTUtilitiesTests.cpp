#include "HVViewer/Utilities/ZNTUtilities.h"
#include "Platform/Foundation/Device.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Tests/Platform/Foundation/DownloadScene.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <locale>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

using platform::Image;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ImageDownload : public DownloadScene {
protected:
    ~ImageDownload() override { Image::setDecodeLimits(limits_); }

    /// What the completion was given.
    struct Arrived {
        platform::ImagePtr image;
        std::optional<platform::Error> error;
    };

    static std::vector<std::uint8_t> pngOf(int widthPx, int heightPx) {
        return platform::encodePng(*flatPicture(widthPx, heightPx, 10, 20, 30, 40)).value();
    }

    Arrived download(const std::string& path) {
        std::vector<Arrived> arrived;
        const auto task = ZNTUtilities::downloadImageWithUrl(
            urlOf(server_.url(path)),
            [&](const platform::ImagePtr& image, const std::optional<platform::Error>& error) {
                arrived.push_back({image, error});
            });
        EXPECT_TRUE(task);
        EXPECT_TRUE(arrived.empty()) << "never inside the call";
        EXPECT_TRUE(runUntilIdle());
        EXPECT_EQ(arrived.size(), 1U);
        return arrived.empty() ? Arrived{} : arrived.front();
    }

    LogRecorder log_;

private:
    platform::DecodeLimits limits_ = Image::decodeLimits();
};

/// The system's version for one test.
class SystemVersion : public testing::Test {
protected:
    ~SystemVersion() override { platform::Device::currentDevice().setSystemVersion(version_); }

    static bool isIOS10(const std::string& version) {
        platform::Device::currentDevice().setSystemVersion(version);
        return ZNTUtilities::isIOS10();
    }

private:
    std::string version_ = platform::Device::currentDevice().systemVersion();
};

} // namespace

TEST_F(ImageDownload, DeliversAPicture) {
    server_.serve("/a.png", {.body = pngOf(8, 4)});
    const Arrived arrived = download("/a.png");
    ASSERT_TRUE(arrived.image);
    EXPECT_FALSE(arrived.error);
    EXPECT_EQ(arrived.image->widthPx(), 8);
    EXPECT_EQ(arrived.image->scale(), 1.0);
    EXPECT_EQ(colourAt(*arrived.image, 7, 3), (std::array<int, 4>{10, 20, 30, 40}));
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(ImageDownload, MayGiveBackItsPixelsAndHaveThemAgain) {
    server_.serve("/a.png", {.body = pngOf(8, 4)});
    const auto image = download("/a.png").image;
    ASSERT_TRUE(image);
    image->giveBackPixels();
    EXPECT_EQ(colourAt(*image, 0, 0), (std::array<int, 4>{10, 20, 30, 40}));
}

TEST_F(ImageDownload, DecodesThePictureOfAnErrorPage) {
    server_.serve("/a.png", {.status = 404, .body = pngOf(8, 4)});
    EXPECT_TRUE(download("/a.png").image);
}

TEST_F(ImageDownload, NamesTheStatusThatCameInPlaceOfAPicture) {
    server_.serve("/page", {.status = 404, .body = bytesOf("no such page")});
    server_.serve("/nothing", {.status = 500});
    (void)download("/page");
    (void)download("/nothing");
    const std::string subject = "image \"" + server_.url("/");
    EXPECT_THAT(log_.lines(),
                ElementsAre(subject + "page\" is not shown: the server answered with status 404; "
                                      "not a JPEG, PNG or WebP picture",
                            subject + "nothing\" is not shown: the server answered with status "
                                      "500; it is empty"));
}

TEST_F(ImageDownload, IsNeitherPictureNorErrorForOtherBytes) {
    server_.serve("/text", {.body = bytesOf("no picture")});
    server_.serve("/empty", {});
    for (const char* path : {"/text", "/empty"}) {
        const Arrived arrived = download(path);
        EXPECT_FALSE(arrived.image) << path;
        EXPECT_FALSE(arrived.error) << path;
    }
    const std::string subject = "image \"" + server_.url("/");
    EXPECT_THAT(log_.lines(),
                ElementsAre(subject + "text\" is not shown: not a JPEG, PNG or WebP picture",
                            subject + "empty\" is not shown: it is empty"));
}

TEST_F(ImageDownload, RefusesAPictureOverTheLimitsBeforeItIsDecoded) {
    Image::setDecodeLimits({.maxBytes = 1000});
    server_.serve("/a.png", {.body = pngOf(100, 100)});
    const Arrived arrived = download("/a.png");
    EXPECT_FALSE(arrived.image);
    EXPECT_FALSE(arrived.error);
    EXPECT_EQ(log_.count("PNG too large (100 x 100 pixels take 40000 bytes"), 1);
}

TEST_F(ImageDownload, ScalesAPictureDownToTheLimits) {
    Image::setDecodeLimits({.maxSidePx = 50});
    server_.serve("/a.png", {.body = pngOf(100, 40)});
    const auto image = download("/a.png").image;
    ASSERT_TRUE(image);
    EXPECT_EQ(image->widthPx(), 50);
    EXPECT_THAT(log_.lines(), ElementsAre("image \"" + server_.url("/a.png") +
                                          "\" is scaled down from 100 x 40 to 50 x 20 pixels"));
}

TEST_F(ImageDownload, PassesErrorsOn) {
    server_.serve("/a.png", {.body = pngOf(8, 4), .cutAfter = 10});
    const Arrived arrived = download("/a.png");
    EXPECT_FALSE(arrived.image);
    ASSERT_TRUE(arrived.error);
    EXPECT_EQ(arrived.error->detail, "the connection was cut short after 10 bytes");
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(ImageDownload, NeedsAnAddressAndACompletion) {
    int calls = 0;
    EXPECT_FALSE(ZNTUtilities::downloadImageWithUrl(std::nullopt,
                                                    [&](const auto&, const auto&) { ++calls; }));
    EXPECT_FALSE(ZNTUtilities::downloadImageWithUrl(urlOf(server_.url("/a.png")), {}));
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(server_.connections(), 0);
}

TEST_F(ImageDownload, CompletesInTheOrderOfTheDownloadsAlsoWhereThereIsNothingToDecode) {
    server_.serve("/stalled", {.body = bytesOf("hello"), .stallAfter = 0});
    server_.serve("/large.png", {.body = pngOf(2000, 1000)});
    std::vector<std::string> order;
    const auto start = [&](const std::string& path) {
        return ZNTUtilities::downloadImageWithUrl(
            urlOf(server_.url(path)),
            [&order, path](const auto&, const auto&) { order.push_back(path); });
    };
    const auto stalled = start("/stalled");
    ASSERT_TRUE(server_.waitUntilStalled());
    (void)start("/large.png");
    ASSERT_TRUE(waitUntilWoken());
    platform::MainQueue::main().runDue(); // it is being decoded now
    stalled->cancel();
    ASSERT_TRUE(runUntilIdle());
    EXPECT_THAT(order, ElementsAre("/large.png", "/stalled"));
}

TEST_F(ImageDownload, EndsWhoeverWaitsOnTheMainThread) {
    struct Waiting {
        std::thread::id& endedOn;
        ~Waiting() { endedOn = std::this_thread::get_id(); }
    };
    server_.serve("/a.png", {.body = pngOf(8, 4)});
    std::thread::id endedOn;
    (void)ZNTUtilities::downloadImageWithUrl(
        urlOf(server_.url("/a.png")),
        [waiting = std::make_shared<Waiting>(endedOn)](const auto&, const auto&) {});
    ASSERT_TRUE(runUntilIdle());
    EXPECT_EQ(endedOn, std::this_thread::get_id());
}

TEST_F(SystemVersion, BelowTenIsNotTen) {
    EXPECT_FALSE(isIOS10("9.3"));
    EXPECT_FALSE(isIOS10("9.99.9"));
    EXPECT_FALSE(isIOS10(""));
    EXPECT_FALSE(isIOS10("unknown"));
}

TEST_F(SystemVersion, FromTenOnIsTenOrLater) {
    EXPECT_TRUE(isIOS10("10.0"));
    EXPECT_TRUE(isIOS10("10"));
    EXPECT_TRUE(isIOS10("10.3.1"));
    EXPECT_TRUE(isIOS10("11.2"));
}

TEST_F(SystemVersion, IsReadAsASinglePrecisionNumber) {
    EXPECT_TRUE(isIOS10("9.99999999")) << "the nearest such number is 10";
    EXPECT_FALSE(isIOS10("9.999999"));
}

TEST_F(SystemVersion, IsTenOrLaterAtFirst) {
    EXPECT_TRUE(ZNTUtilities::isIOS10());
}

TEST_F(SystemVersion, HasAPointInEveryLocale) {
    /// As in many countries.
    struct Comma : std::numpunct<char> {
        [[nodiscard]] char do_decimal_point() const override { return ','; }
        [[nodiscard]] char do_thousands_sep() const override { return '.'; }
        [[nodiscard]] std::string do_grouping() const override { return "\1"; }
    };
    const std::locale before = std::locale::global({std::locale::classic(), new Comma});
    EXPECT_FALSE(isIOS10("9.3"));
    EXPECT_TRUE(isIOS10("10.3.1"));
    std::locale::global(before);
}
