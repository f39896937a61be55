#include "Apps/Player/Contents/HotSpotFile.h"

#include "Apps/Player/Contents/HotSpots.h"
#include "Apps/Player/Contents/Members.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

using nlohmann::json;
using platform::Error;
using platform::ErrorCode;

namespace {

using Read = platform::Result<std::shared_ptr<const HotSpotFile>>;

HotSpotFile readMembers(const Members& members, const std::string& folder) {
    members.allowOnly(
        {"hot_spots", "picking_point", "reject_rate", "tap_detection", "auto_picking"});
    HotSpotFile file;
    file.hotSpots = readHotSpots(members, folder);
    if (members.has("tap_detection"))
        file.tapDetection = members.flag("tap_detection");
    if (members.has("auto_picking"))
        file.autoPicking = members.flag("auto_picking");
    return file;
}

/// The line that contains the byte at which the parser stopped; the first byte is 1.
std::string lineOf(const std::string& text, std::size_t byte) {
    const std::size_t before = std::min(byte > 0 ? byte - 1 : 0, text.size());
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(before);
    return std::to_string(1 + std::count(text.begin(), end, '\n'));
}

Read readText(const std::string& text, const std::string& name) {
    const std::string folder = std::filesystem::path(name).parent_path().string();
    try {
        return std::make_shared<const HotSpotFile>(readMembers(Members(parsedJson(text)), folder));
    } catch (const json::parse_error& wrong) {
        return Error{ErrorCode::Corrupt,
                     name + ":" + lineOf(text, wrong.byte) + ": this is not JSON"};
    } catch (const json::out_of_range&) {
        return Error{ErrorCode::Corrupt, name + ": a number in it is too large"};
    } catch (const LineRefused& refused) {
        return Error{ErrorCode::Corrupt, name + ": " + refused.what()};
    }
}

} // namespace

void HotSpotFile::applyTo(ZNTDisplayViewController& controller) const {
    // Automatic picking is set first, because a video that has a frame uses the list at once.
    controller.setEnableHotSpotAutoPicking(autoPicking);
    controller.setEnableHotSpotTapDetection(tapDetection);
    addHotSpots(controller, hotSpots);
}

Read readHotSpotFile(const std::string& path) {
    if (path.empty())
        return std::shared_ptr<const HotSpotFile>();
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        return Error{ErrorCode::Missing, path + ": there is no such file"};
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path, ignored))
        return Error{ErrorCode::Unreadable, path + ": cannot be read"};
    return readHotSpotFile(file, path);
}

Read readHotSpotFile(std::istream& stream, const std::string& name) {
    return readText({std::istreambuf_iterator<char>(stream), {}}, name);
}
