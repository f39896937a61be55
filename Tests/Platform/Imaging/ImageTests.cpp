#include "Platform/Imaging/Image.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureFiles.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using platform::DecodeLimits;
using platform::Image;
using platform::ImagePtr;
using platform::PixelStorage;
using tests::Bytes;
using tests::TestPicture;

/// Collects the log, and puts the process's limits back afterwards.
class ImageFile : public ::testing::Test {
protected:
    ~ImageFile() override { Image::setDecodeLimits(limits_); }

    void expectNotShown(const std::string& path, const std::string& cause) {
        EXPECT_EQ(Image::imageWithContentsOfFile(path), nullptr);
        expectLog({"image \"" + path + "\" is not shown: " + cause});
    }

    void expectLog(const std::vector<std::string>& lines) { EXPECT_EQ(log_.lines(), lines); }

    tests::TemporaryFolder folder_;
    LogRecorder log_;

private:
    DecodeLimits limits_ = Image::decodeLimits();
};

Bytes textBytes(const std::string& text) {
    return {text.begin(), text.end()};
}

TEST(PixelStorage, HasRowsOneAfterTheOther) {
    PixelStorage pixels(3, 2);
    EXPECT_EQ(pixels.rowBytes(), 12U);
    EXPECT_EQ(pixels.size(), 24U);
    EXPECT_EQ(pixels.row(1), pixels.bytes.get() + 12);
}

TEST(Image, IsMeasuredInPoints) {
    const Image image(tests::quadrants(300, 150).storage(), 3.0);
    EXPECT_EQ(image.widthPx(), 300);
    EXPECT_EQ(image.heightPx(), 150);
    EXPECT_EQ(image.size(), (platform::Size{100, 50}));
    EXPECT_EQ(image.pixels().size(), std::size_t{4} * 300 * 150);
}

TEST(Image, AllowsAGigabyteOfAnyShapeAtFirst) {
    EXPECT_EQ(Image::decodeLimits().maxSidePx, 0);
    EXPECT_EQ(Image::decodeLimits().maxBytes, std::size_t{1} << 30);
}

TEST_F(ImageFile, IsShownWithoutALogLine) {
    const TestPicture picture = tests::quadrants(32, 16);
    const ImagePtr image =
        Image::imageWithContentsOfFile(folder_.add("fine.png", tests::pngFile(picture)));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(TestPicture(*image), picture);
    EXPECT_EQ(image->scale(), 1.0);
    expectLog({});
}

TEST_F(ImageFile, OfAnyLengthIsReadWhole) {
    const TestPicture picture = tests::noise(400, 300, 3, tests::Alpha::Opaque);
    const ImagePtr image =
        Image::imageWithContentsOfFile(folder_.add("long.png", tests::pngFile(picture)));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(TestPicture(*image), picture);
}

TEST_F(ImageFile, ThatIsMissingIsNotShown) {
    const std::string path = folder_.pathOf("no such picture.jpg");
    expectNotShown(path, "it is missing (No such file or directory)");
}

TEST_F(ImageFile, WithoutANameIsNotShown) {
    expectNotShown("", "it is missing (No such file or directory)");
}

TEST_F(ImageFile, UnderAFileIsNotShown) {
    const std::string path = folder_.add("file.png", {}) + "/picture.png";
    expectNotShown(path, "it is missing (Not a directory)");
}

TEST_F(ImageFile, ThatIsADirectoryIsNotShown) {
    expectNotShown(folder_.path(), "it is a directory");
}

// The kernel lets this one be opened and fails every read at its start, for root too.
TEST_F(ImageFile, ThatCannotBeReadIsNotShown) {
    expectNotShown("/proc/self/mem", "it cannot be read (Input/output error)");
}

TEST_F(ImageFile, ThatPointsToItselfIsNotShown) {
    const std::string path = folder_.pathOf("loop.png");
    std::filesystem::create_symlink(path, path);
    expectNotShown(path, "it cannot be read (Too many levels of symbolic links)");
}

TEST_F(ImageFile, ThatMayNotBeReadIsNotShown) {
    const std::string path = folder_.add("secret.png", tests::pngFile(tests::quadrants(8, 8)));
    std::filesystem::permissions(path, std::filesystem::perms::none);
    constexpr uid_t nobody = 65'534;
    const uid_t user = ::geteuid();
    // Root may read every file.
    if (user == 0 && ::seteuid(nobody) != 0)
        GTEST_SKIP() << "root, and there is no other user to be";
    expectNotShown(path, "it cannot be read (Permission denied)");
    ASSERT_EQ(::seteuid(user), 0);
}

TEST_F(ImageFile, ThatIsAPipeIsNotWaitedFor) {
    const std::string path = folder_.pathOf("pipe.png");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    expectNotShown(path, "it is not a regular file");
}

TEST_F(ImageFile, ThatIsEmptyIsNotShown) {
    expectNotShown(folder_.add("empty.jpg", {}), "it is empty");
}

TEST_F(ImageFile, ThatIsHugeIsNotRead) {
    const std::string path = folder_.add("huge.png", {});
    std::filesystem::resize_file(path, std::uintmax_t{1} << 40); // sparse: it takes no room
    expectNotShown(path, "the file is over 2147483648 bytes");
}

TEST_F(ImageFile, ThatIsTextIsNotShown) {
    expectNotShown(folder_.add("words.txt", textBytes("Dear reader")),
                   "not a JPEG, PNG or WebP picture");
}

TEST_F(ImageFile, ThatIsCutShortIsNotShown) {
    Bytes file = tests::jpegFile(tests::quadrants(64, 64));
    file.erase(file.end() - 2, file.end());
    expectNotShown(folder_.add("cut.jpg", file),
                   "JPEG cut short (" + std::to_string(file.size()) + " bytes are not all of it)");
}

TEST_F(ImageFile, OverTheSideLimitIsScaledDownWithAWarning) {
    Image::setDecodeLimits({40, std::size_t{1} << 20});
    const std::string path = folder_.add("wide.png", tests::pngFile(tests::quadrants(200, 100)));
    const ImagePtr image = Image::imageWithContentsOfFile(path);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(TestPicture(*image), tests::quadrants(40, 20));
    expectLog({"image \"" + path +
               "\" is scaled down from 200 x 100 to 40 x 20 pixels to fit the limit of 40"});
}

TEST_F(ImageFile, OverTheByteLimitIsNotShown) {
    Image::setDecodeLimits({0, 1000});
    expectNotShown(folder_.add("heavy.png", tests::pngFile(tests::quadrants(16, 16))),
                   "PNG too large (16 x 16 pixels take 1024 bytes, the limit is 1000)");
}

TEST_F(ImageFile, ThatIsDamagedButUsableIsShownWithAWarning) {
    Bytes file = tests::jpegFile(tests::noise(64, 64, 4, tests::Alpha::Opaque));
    file.insert(file.begin() + 20, {1, 2, 3}); // between the first two segments
    const std::string path = folder_.add("damaged.jpg", file);
    EXPECT_NE(Image::imageWithContentsOfFile(path), nullptr);
    expectLog({"image \"" + path +
               "\" is shown although damaged: "
               "Corrupt JPEG data: 3 extraneous bytes before marker 0xdb"});
}

TEST_F(ImageFile, InMemoryIsShown) {
    const TestPicture picture = tests::quadrants(20, 10);
    const ImagePtr image = Image::imageWithData(tests::webpFile(picture));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(TestPicture(*image), picture);
    expectLog({});
}

TEST_F(ImageFile, InMemoryIsNamedSoWhenRefused) {
    EXPECT_EQ(Image::imageWithData({}), nullptr);
    expectLog({"image in memory is not shown: it is empty"});
}

} // namespace
