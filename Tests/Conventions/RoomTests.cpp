#include "Tests/Conventions/SourceText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// A folder of sources, and the folders whose headers its sources may include besides their own.
/// A name that ends in "/" stands for every room below it.
struct Room {
    std::string folder;
    std::vector<std::string> neighbours;
};

using Rooms = std::vector<Room>;

/// CONTRIBUTING.md draws the same graph.
const Rooms& rooms() {
    static const std::string foundation = "Platform/Foundation";
    static const Rooms table{
        {foundation, {}},
        {"Platform/Imaging", {foundation}},
        {"Platform/Motion", {foundation}},
        {"Platform/Graphics", {foundation, "Platform/Imaging"}},
        {"Platform/Interface", {foundation, "Platform/Imaging", "Platform/Graphics"}},
        {"Platform/Media", {foundation, "Platform/Imaging"}},

        {"HVViewer/Utilities", {"Platform/"}},
        {"HVViewer/Utilities/Categories", {"Platform/"}},
        {"HVViewer/Model", {"Platform/", "HVViewer/Utilities"}},
        {"HVViewer/Model/Streamer", {"Platform/", "HVViewer/Utilities"}},
        {"HVViewer/Model/HotSpot", {"Platform/"}},
        {"HVViewer/Model/HotSpot/ZNTHotSpotDrawer",
         {"Platform/", "HVViewer/Model", "HVViewer/Model/HotSpot"}},
        {"HVViewer/DisplayController/DisplayView/HVVProgram", {"Platform/", "HVViewer/Model"}},
        {"HVViewer/DisplayController/DisplayView",
         {"Platform/", "HVViewer/Utilities", "HVViewer/Model",
          "HVViewer/Model/HotSpot/ZNTHotSpotDrawer",
          "HVViewer/DisplayController/DisplayView/HVVProgram"}},
        {"HVViewer/DisplayController",
         {"Platform/", "HVViewer/Utilities", "HVViewer/Model/",
          "HVViewer/DisplayController/DisplayView"}},
        {"HVViewer", {"Platform/", "HVViewer/"}},

        {"Backends/EXIF", {}},
        {"Backends/JPEG", {"Backends/EXIF", foundation, "Platform/Imaging"}},
        {"Backends/PNG", {"Backends/EXIF", foundation, "Platform/Imaging"}},
        {"Backends/WebP", {"Backends/EXIF", foundation, "Platform/Imaging"}},
        {"Backends/Cairo", {foundation, "Platform/Imaging"}},
        {"Backends/CURL", {foundation}},
        {"Backends/GStreamer", {foundation, "Platform/Media"}},
        {"Backends", {"Backends/", "Platform/Imaging"}},
        {"Resources", {foundation}},

        {"Hosts/Embedded", {"Platform/"}},
        {"Hosts/Headless", {"Hosts/Embedded", "Platform/"}},
        {"Hosts/SDL", {"Hosts/Embedded", "Platform/"}},

        {"Apps/Player/Terminal", {"HVViewer/", "Platform/"}},
        {"Apps/Player/Output", {"Apps/Player/Terminal", "HVViewer/", "Platform/"}},
        {"Apps/Player/Contents",
         {"Apps/Player/Output", "Apps/Player/Terminal", "HVViewer/", "Platform/"}},
        {"Apps/Player/Scripts",
         {"Apps/Player/Contents", "Apps/Player/Terminal", "HVViewer/", "Platform/"}},
        {"Apps/Player/Controls", {"Hosts/SDL", "HVViewer/", "Platform/"}},
        {"Apps/Player/Rendering",
         {"Apps/Player/Contents", "Apps/Player/Output", "Apps/Player/Scripts",
          "Apps/Player/Terminal", "Hosts/Headless", "HVViewer/", "Platform/"}},
        {"Apps/Player/Window",
         {"Apps/Player/Contents", "Apps/Player/Controls", "Apps/Player/Output",
          "Apps/Player/Scripts", "Apps/Player/Terminal", "Hosts/SDL", "HVViewer/", "Platform/"}},
        {"Apps/Player",
         {"Apps/Player/Rendering", "Apps/Player/Terminal", "Apps/Player/Window", foundation}},
    };
    return table;
}

std::string folderOf(const std::string& path) {
    const auto end = path.rfind('/');
    return end == std::string::npos ? "" : path.substr(0, end);
}

bool mayEnter(const Room& room, const std::string& folder) {
    return folder == room.folder ||
           std::any_of(room.neighbours.begin(), room.neighbours.end(),
                       [&](const std::string& neighbour) {
                           return neighbour.ends_with('/') ? (folder + '/').starts_with(neighbour)
                                                           : folder == neighbour;
                       });
}

/// Where sources lie in a folder without a room, or include a header of a room that is not theirs
/// to know.
std::vector<std::string> trespasses(const std::vector<SourceText>& sources, const Rooms& rooms) {
    std::vector<std::string> findings;
    for (const SourceText& source : sources) {
        const auto room = std::find_if(rooms.begin(), rooms.end(), [&](const Room& each) {
            return each.folder == folderOf(source.path);
        });
        if (room == rooms.end()) {
            findings.push_back(source.finding(1, "the folder is no room of RoomTests.cpp"));
            continue;
        }
        for (const Include& include : source.includes) {
            if (!include.isAngled && !mayEnter(*room, folderOf(include.path)))
                findings.push_back(source.finding(include.line, include.path + " is included"));
        }
    }
    return findings;
}

/// The rooms that a room's sources could reach, itself if it is on a cycle.
bool reaches(const Rooms& rooms, const Room& from, const std::string& wanted,
             std::vector<std::string>& seen) {
    for (const Room& room : rooms) {
        const bool isNew = std::find(seen.begin(), seen.end(), room.folder) == seen.end();
        if (room.folder == from.folder || !mayEnter(from, room.folder) || !isNew)
            continue;
        seen.push_back(room.folder);
        if (room.folder == wanted || reaches(rooms, room, wanted, seen))
            return true;
    }
    return false;
}

std::vector<std::string> roomsOnCycles(const Rooms& rooms) {
    std::vector<std::string> found;
    for (const Room& room : rooms) {
        std::vector<std::string> seen;
        if (reaches(rooms, room, room.folder, seen))
            found.push_back(room.folder);
    }
    return found;
}

} // namespace

TEST(Rooms, IncludeOnlyTheirNeighbours) {
    EXPECT_THAT(
        trespasses(sourcesIn({"Platform", "HVViewer", "Backends", "Resources", "Hosts", "Apps"}),
                   rooms()),
        IsEmpty());
}

TEST(Rooms, FormNoCycle) {
    EXPECT_THAT(roomsOnCycles(rooms()), IsEmpty());
}

TEST(Rooms, AllHaveSources) {
    for (const Room& room : rooms())
        EXPECT_FALSE(sourcesIn({room.folder}).empty()) << room.folder;
}

TEST(RoomRule, RefusesARoomThatIsNoNeighbour) {
    const Rooms table{{"A", {}}, {"B", {"A"}}, {"C/D", {"A/"}}};
    EXPECT_THAT(trespasses({{"A/a.cpp", "#include \"A/b.h\"\n#include \"B/b.h\"\n"}}, table),
                ElementsAre("A/a.cpp:2: B/b.h is included"));
    EXPECT_THAT(trespasses({{"B/b.h", "#include \"A/a.h\"\n#include <map>\n"}}, table), IsEmpty());
    EXPECT_THAT(trespasses({{"B/b.h", "#include \"A/E/a.h\"\n"}}, table), SizeIs(1));
    EXPECT_THAT(trespasses({{"C/D/d.h", "#include \"A/E/a.h\"\n"}}, table), IsEmpty());
    EXPECT_THAT(trespasses({{"C/d.h", ""}}, table), SizeIs(1));
}

TEST(RoomRule, FindsCycles) {
    EXPECT_THAT(roomsOnCycles({{"A", {"B"}}, {"B", {"C"}}, {"C", {"A"}}, {"D", {"A"}}}),
                ElementsAre("A", "B", "C"));
    EXPECT_THAT(roomsOnCycles({{"A", {"B"}}, {"B", {}}}), IsEmpty());
}
