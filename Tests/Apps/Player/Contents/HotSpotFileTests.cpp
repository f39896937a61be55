#include "Apps/Player/Contents/HotSpotFile.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

/// A file of hot spots for one test.
class HotSpotFileTest : public ::testing::Test {
protected:
    std::string write(const std::string& text) { return folder_.addText("spots.json", text); }
    std::shared_ptr<const HotSpotFile> accepted(const std::string& text) {
        const auto file = readHotSpotFile(write(text));
        EXPECT_TRUE(file) << (file ? "" : file.error().detail);
        return file ? file.value() : std::make_shared<const HotSpotFile>();
    }
    /// Why it is refused, without the file's name in front.
    std::string refusal(const std::string& text) {
        const std::string path = write(text);
        const auto file = readHotSpotFile(path);
        if (file)
            return "accepted";
        EXPECT_EQ(file.error().detail.find(path), 0U) << file.error().detail;
        return file.error().detail.substr(path.size());
    }

    tests::TemporaryFolder folder_;
};

} // namespace

TEST_F(HotSpotFileTest, HasTheHotSpotsAndHowTheyArePicked) {
    const auto file = accepted(R"({
  "hot_spots": [
    {"name": "door", "image": "icons/door.png", "vertical": 0.5, "horizontal": 1}
  ],
  "picking_point": [0.5, 0.25], "reject_rate": 4,
  "tap_detection": false, "auto_picking": false
})");
    ASSERT_EQ(file->hotSpots.hotSpots.size(), 1U);
    EXPECT_EQ(file->hotSpots.hotSpots[0].image, folder_.pathOf("icons/door.png"));
    EXPECT_EQ(file->hotSpots.pickingPoint, (platform::Point{0.5, 0.25}));
    EXPECT_EQ(file->hotSpots.rejectRate, 4);
    EXPECT_FALSE(file->tapDetection);
    EXPECT_FALSE(file->autoPicking);
}

TEST_F(HotSpotFileTest, PicksBothWaysUnlessItSaysOtherwise) {
    const auto file = accepted(R"({"hot_spots":[]})");
    EXPECT_TRUE(file->tapDetection);
    EXPECT_TRUE(file->autoPicking);
}

TEST_F(HotSpotFileTest, IsNoneWithoutAName) {
    const auto none = readHotSpotFile("");
    ASSERT_TRUE(none);
    EXPECT_EQ(none.value(), nullptr);
}

TEST_F(HotSpotFileTest, NamesTheLineOfWhatIsNotJson) {
    EXPECT_EQ(refusal(""), ":1: this is not JSON");
    EXPECT_EQ(refusal("{\"hot_spots\":\n[\n{\"name\":door}]}"), ":3: this is not JSON");
    EXPECT_EQ(refusal("{\"hot_spots\":[]\n\n"), ":3: this is not JSON");
    EXPECT_EQ(refusal("{\"hot_spots\":[]}\n{}"), ":2: this is not JSON");
    EXPECT_EQ(refusal("{\"hot_spots\":[{\"name\":\"\xff\"}]}"), ":1: this is not JSON");
}

TEST_F(HotSpotFileTest, NamesTheMemberThatIsWrong) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"[]", "this is not a JSON object"},
        {"{}", R"("hot_spots" is missing)"},
        {R"({"at":0,"hot_spots":[]})", R"(unknown member "at")"},
        {R"({"hot_spots":[],"auto_picking":1})", R"("auto_picking" is not true or false)"},
        {R"({"hot_spots":[],"tap_detection":"no"})", R"("tap_detection" is not true or false)"},
        {R"({"hot_spots":[],"reject_rate":0})", R"("reject_rate" is below 1)"},
        {R"({"hot_spots":[],"picking_point":[1,2]})",
         R"("picking_point" is not [x, y], each from 0 to 1)"},
        {R"({"hot_spots":[{"image":"a.png","vertical":true,"horizontal":0}]})",
         "hot_spots[0].vertical is not a number"},
        {R"({"hot_spots":[{"image":"a.png","vertical":1e999,"horizontal":0}]})",
         "a number in it is too large"}};
    for (const auto& [text, reason] : cases)
        EXPECT_EQ(refusal(text), ": " + reason) << text;
}

TEST_F(HotSpotFileTest, IsRefusedOnOneLineWhateverItQuotes) {
    EXPECT_EQ(refusal(R"({"\u001b[2J\n":1})"), ": unknown member \"?[2J?\"");
    EXPECT_EQ(refusal(R"({"\u0085é":1})"), ": unknown member \"??é\"");
}

TEST_F(HotSpotFileTest, IsRefusedWhenItIsNestedWithoutEnd) {
    constexpr std::size_t depth = 200'000; // more than a stack holds
    const std::string lists = std::string(depth, '[') + std::string(depth, ']');
    EXPECT_EQ(refusal(R"({"hot_spots":[{"name":)" + lists + "}]}"), ": this is nested too deeply");
}

TEST_F(HotSpotFileTest, CanComeFromAStream) {
    std::istringstream stream(R"({"hot_spots":[{"image":"a.png","vertical":0,"horizontal":0}]})");
    const auto file = readHotSpotFile(stream, "rooms/spots.json");
    ASSERT_TRUE(file);
    ASSERT_EQ(file.value()->hotSpots.hotSpots.size(), 1U);
    EXPECT_EQ(file.value()->hotSpots.hotSpots[0].image, "rooms/a.png");
}

TEST_F(HotSpotFileTest, IsCalledByTheNameOfItsStream) {
    std::istringstream stream("{");
    const auto file = readHotSpotFile(stream, "spots");
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error().detail, "spots:1: this is not JSON");
}

TEST_F(HotSpotFileTest, IsWhatItsManualShows) {
    std::ifstream manual(std::string(ZANTO_SOURCE_DIR) + "/docs/hot-spots.md");
    std::string text;
    for (std::string line; std::getline(manual, line) && line != "```json";) {
    }
    for (std::string line; std::getline(manual, line) && line != "```";)
        text += line + "\n";
    EXPECT_EQ(accepted(text)->hotSpots.hotSpots.size(), 2U);
}

TEST_F(HotSpotFileTest, NamesAFileThatCannotBeRead) {
    const auto missing = readHotSpotFile("/no/such/spots.json");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().detail, "/no/such/spots.json: there is no such file");
    const auto folder = readHotSpotFile(folder_.path());
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error().detail, folder_.path() + ": cannot be read");
}
