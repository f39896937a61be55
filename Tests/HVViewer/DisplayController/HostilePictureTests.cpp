#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/HookRecorder.h"
#include "Tests/Support/HttpScripts.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/MemoryPeak.h"
#include "Tests/Support/PictureFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

using platform::URL;
using testing::ElementsAre;
using tests::Bytes;
using tests::httpAnswer;
using tests::HttpReply;

namespace {

using Pixel = std::array<int, 4>;

constexpr Pixel kShownBefore{200, 0, 0, 255};
constexpr Pixel kShownAfter{0, 200, 0, 255};
constexpr long kMostKilobytes = 256 * 1024; // sanitizers have a share of it
constexpr std::ptrdiff_t kHeaderEnd = 33;   // of a PNG: its signature and its first chunk

void putNumber(Bytes& bytes, std::size_t at, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes.at(at + i) = static_cast<std::uint8_t>(number >> (24 - 8 * i));
}

std::size_t placeOf(const Bytes& bytes, std::string_view text) {
    const Bytes sought(text.begin(), text.end());
    const auto found = std::search(bytes.begin(), bytes.end(), sought.begin(), sought.end());
    return static_cast<std::size_t>(std::distance(bytes.begin(), found));
}

Bytes pngClaiming(std::uint32_t widthPx, std::uint32_t heightPx) {
    Bytes file = tests::pngFile(tests::quadrants(8, 4));
    putNumber(file, 16, widthPx);
    putNumber(file, 20, heightPx);
    tests::repairPNGChecksums(file);
    return file;
}

/// Little that unpacks to 36 MB.
Bytes packedBomb() {
    const Bytes file = tests::flatGreyPNG(6000, 6000, 0);
    Bytes packed;
    for (std::size_t at = kHeaderEnd; at + 12 <= file.size();) {
        const std::size_t length = static_cast<std::size_t>(file[at]) << 24U | file[at + 1] << 16U |
                                   file[at + 2] << 8U | file[at + 3];
        if (std::string_view(reinterpret_cast<const char*>(&file[at + 4]), 4) == "IDAT")
            packed.insert(packed.end(), &file[at + 8], &file[at + 8] + length);
        at += 12 + length;
    }
    return packed;
}

/// A small picture that is whole but for the chunks before its pixels.
Bytes pngWithChunks(const std::string& beginning, int count) {
    const Bytes packed = packedBomb();
    Bytes chunk(4);
    chunk.insert(chunk.end(), beginning.begin(), beginning.end());
    chunk.insert(chunk.end(), packed.begin(), packed.end());
    putNumber(chunk, 0, static_cast<std::uint32_t>(chunk.size() - 8));
    chunk.resize(chunk.size() + 4);
    Bytes file = tests::pngFile(tests::quadrants(8, 4));
    for (int i = 0; i < count; ++i)
        file.insert(file.begin() + kHeaderEnd, chunk.begin(), chunk.end());
    tests::repairPNGChecksums(file);
    return file;
}

/// The pixels go on long after the picture has all of its own.
Bytes pngOfTooManyPixels() {
    Bytes file = tests::flatGreyPNG(6000, 6000, 0);
    putNumber(file, 16, 8);
    putNumber(file, 20, 4);
    tests::repairPNGChecksums(file);
    return file;
}

Bytes jpegClaiming(int widthPx, int heightPx) {
    Bytes file = tests::jpegFile(tests::quadrants(16, 8));
    const std::size_t at = placeOf(file, "\xFF\xC0");
    file.at(at + 5) = static_cast<std::uint8_t>(heightPx >> 8);
    file.at(at + 6) = static_cast<std::uint8_t>(heightPx);
    file.at(at + 7) = static_cast<std::uint8_t>(widthPx >> 8);
    file.at(at + 8) = static_cast<std::uint8_t>(widthPx);
    return file;
}

/// The most that the format can say: 16384 to a side.
Bytes webpClaimingTheMost() {
    Bytes file = tests::webpFile(tests::quadrants(16, 8));
    const std::size_t sizes = placeOf(file, "VP8L") + 9;
    file.at(sizes) = file.at(sizes + 1) = file.at(sizes + 2) = 0xFF;
    file.at(sizes + 3) |= 0x0F;
    return file;
}

/// What a server sends, what is heard of it, and what is said of it.
struct Harm {
    std::string name;
    std::function<HttpReply()> reply;
    std::string hook;
    std::string words; // in the hook's error or in the log; empty: it is a picture all the same
};

std::ostream& operator<<(std::ostream& out, const Harm& harm) {
    return out << harm.name;
}

const std::string kFinished = "downloadImageFinished";
const std::string kFailed = "downloadImageFailedWithError";

Harm picture(const std::string& name, const std::function<Bytes()>& file,
             const std::string& words) {
    return {name, [file] { return HttpReply{.body = file()}; }, kFinished, words};
}

Harm script(const std::string& name, const tests::HttpScript& script, const std::string& words) {
    return {name, [script] { return HttpReply{.script = script}; }, kFailed, words};
}

std::vector<Harm> bombs() {
    using namespace std::string_literals;
    return {
        picture(
            "PNGClaiming60000", [] { return pngClaiming(60'000, 60'000); }, "PNG damaged"),
        picture(
            "PNGClaimingAHugeWidth", [] { return pngClaiming(0x7FFFFFFF, 1); }, "PNG too large"),
        picture(
            "PNGClaimingAHugeHeight", [] { return pngClaiming(1, 0x7FFFFFFF); }, "PNG too large"),
        picture(
            "PNGClaimingBeyondTheFormat", [] { return pngClaiming(0xFFFFFFFF, 1); }, "PNG damaged"),
        picture("PNGOfTooManyPixels", pngOfTooManyPixels, ""),
        picture(
            "PNGWithPackedTexts", [] { return pngWithChunks("zTXtComment\0\0"s, 50); }, ""),
        picture(
            "PNGWithPackedForeignTexts", [] { return pngWithChunks("iTXtComment\0\1\0\0\0"s, 50); },
            ""),
        picture(
            "PNGWithAPackedProfile", [] { return pngWithChunks("iCCPName\0\0"s, 1); }, ""),
        picture(
            "JPEGClaimingTheMost", [] { return jpegClaiming(65'500, 65'500); }, "JPEG cut short"),
        picture("WebPClaimingTheMost", webpClaimingTheMost, "WebP "),
    };
}

std::vector<Harm> servers() {
    const std::string pngType = "Content-Type: image/png\r\n";
    return {
        script("ClosingAtOnce", tests::saying(""), "cut short after 0 bytes"),
        script("ResettingInTheBody",
               tests::sayingAndResetting(httpAnswer("Content-Length: 99\r\n", "\x89PNG")),
               "cut short after 4 bytes"),
        script("SpeakingNoHTTP", tests::saying("\x89PNG\r\n\x1a\n"), "the answer is not HTTP"),
        script("WithAnEndlessHead", tests::sayingForEver("HTTP/1.1 200 OK\r\n", "X: y\r\n"),
               "the head of the answer is too large"),
        script("TellingFarTooMuch",
               tests::saying(httpAnswer(pngType + "Content-Length: 9000000000\r\n", "\x89PNG")),
               "it is too large"),
        script("WithoutATrueLength", tests::saying(httpAnswer("Content-Length: -1\r\n", "\x89PNG")),
               "the answer is not HTTP"),
        {"RedirectingForEver", [] { return tests::redirectTo("/harm"); }, kFailed,
         "redirected more than 10 times"},
        {"RedirectingToAFile", [] { return tests::redirectTo("file:///etc/hostname"); }, kFailed,
         "the scheme \"file\""},
        {"WithNothing", [] { return HttpReply{.status = 204}; }, kFinished, "it is empty"},
        {"SayingNotChanged", [] { return HttpReply{.status = 304}; }, kFinished, "it is empty"},
    };
}

/// A player on screen that has nothing yet, and a server that means harm.
class HostilePicture : public testing::TestWithParam<Harm> {
protected:
    HostilePicture() {
        ::setenv("no_proxy", "*", 1);
        makePlayer();
        server_.serve("/harm", GetParam().reply());
        server_.serve("/good", {.body = tests::pngFile({8, 4, {0, 200, 0, 255}})});
    }
    void makePlayer() {
        player_ = platform::make<HookRecorder>();
        host_.embedded().setRootViewController(player_);
        host_.embedded().appear();
        host_.host().settle();
    }
    [[nodiscard]] bool isPicture() const { return GetParam().words.empty(); }
    void download(const std::string& path) {
        player_->prepareImageWithUrl(URL::URLWithString(server_.url(path)));
        host_.host().settle();
    }
    Pixel colourShown() { return colourAt(*host_.snapshot(), 160, 60); }

    tests::HttpServer server_;
    HeadlessPlayer host_{{320, 180}};
    std::shared_ptr<HookRecorder> player_;
};

INSTANTIATE_TEST_SUITE_P(Bombs, HostilePicture, testing::ValuesIn(bombs()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Servers, HostilePicture, testing::ValuesIn(servers()),
                         [](const auto& test) { return test.param.name; });

} // namespace

TEST_P(HostilePicture, IsToldOnceAndMayBeFollowed) {
    const Harm& harm = GetParam();
    const LogRecorder log;
    download("/harm");
    EXPECT_THAT(player_->take(), ElementsAre("downloadImageStarted", harm.hook));
    EXPECT_THAT(player_->failure, testing::HasSubstr(harm.hook == kFailed ? harm.words : ""));
    const bool isRefused = harm.hook == kFinished && !isPicture();
    EXPECT_EQ(log.count("is not shown: " + harm.words), isRefused ? 1 : 0);
    EXPECT_EQ(player_->srcImage() != nullptr, isPicture());
    if (isPicture())
        makePlayer(); // a picture that is shown is not replaced
    download("/good");
    EXPECT_THAT(player_->take(), ElementsAre("downloadImageStarted", kFinished));
    EXPECT_EQ(colourShown(), kShownAfter);
}

TEST_P(HostilePicture, LeavesWhatIsShown) {
    player_->prepareImageWithUrl(URL::URLWithString(server_.url("/harm")));
    player_->prepareImage(flatPicture(8, 4, 200, 0, 0));
    host_.embedded().disappear();
    host_.embedded().appear();
    host_.host().settle();
    EXPECT_EQ(colourShown() == kShownBefore, !isPicture());
}

TEST_P(HostilePicture, TakesLittleMemory) {
    download("/good");
    makePlayer();
    if (tests::resetMemoryPeak() < 0)
        GTEST_SKIP() << "this system does not let a process reset its peak of memory";
    const long before = tests::resetMemoryPeak();
    download("/harm");
    EXPECT_LT(tests::resetMemoryPeak() - before, kMostKilobytes);
}
