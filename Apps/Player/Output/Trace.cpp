#include "Apps/Player/Output/Trace.h"

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Interface/Application.h"

#include <cstdint>

using nlohmann::ordered_json;

namespace {

ordered_json record() {
    return {{"at", platform::toSeconds(platform::MainQueue::main().now())}};
}

ordered_json matrix(const GLKMatrix4& matrix) {
    ordered_json elements = matrix.m; // NaN is written as null
    return elements;
}

/// The matrices of the view's hot spots. They are computed again, because in side-by-side mode both
/// views share the hot spots, which keep only the matrix of the view that drew them last.
ordered_json hotSpotMatrices(const ZNTDisplayView& view) {
    ordered_json matrices = ordered_json::array();
    const auto drawer = view.glDrawer() ? view.glDrawer()->hotSpotGLDrawer() : nullptr;
    if (!drawer)
        return matrices;
    for (const auto& spot : drawer->hotSpots()) {
        spot->updateWithModelViewProjection(view.camera().modelViewProjection);
        matrices.push_back(matrix(spot->hotSpotModelViewProjectionMatrix()));
    }
    return matrices;
}

ordered_json describe(const ZNTDisplayView& view) {
    const platform::Rect frame = view.frame();
    const SceneCameraInputs& inputs = view.cameraInputs();
    const SceneCamera& camera = view.camera();
    return {{"frame", {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height}},
            {"scale", inputs.scale},
            {"field_of_view", camera.fieldOfViewDegrees},
            {"aspect", camera.aspect},
            {"distance", camera.distance},
            {"mvp", matrix(camera.modelViewProjection)},
            {"view", matrix(inputs.view)},
            {"rotation", matrix(inputs.rotation)},
            {"translation", matrix(inputs.translation)},
            {"motion", inputs.motion ? matrix(*inputs.motion) : ordered_json()},
            {"hot_spots", hotSpotMatrices(view)}};
}

} // namespace

platform::Result<std::unique_ptr<Trace>> Trace::create(const std::string& path) {
    std::ofstream file;
    if (!path.empty()) {
        file.open(path, std::ios::binary | std::ios::trunc);
        if (!file)
            return platform::Error{platform::ErrorCode::Unreadable, path + ": cannot be written"};
    }
    return std::unique_ptr<Trace>(new Trace(std::move(file)));
}

void Trace::hook(std::string_view name, const ordered_json& arguments) {
    ordered_json line = record();
    line["hook"] = name;
    if (arguments.is_object())
        line.update(arguments);
    write(line);
}

void Trace::log(std::string_view text) {
    ordered_json line = record();
    line["log"] = text;
    write(line);
}

void Trace::frame(std::string_view name, const ZNTDisplayViewController& controller,
                  int presented) {
    const auto orientation = platform::Application::sharedApplication().statusBarOrientation();
    ordered_json line = record();
    line["frame"] = name;
    line["mode"] = static_cast<std::uint64_t>(controller.currentMode());
    line["orientation"] = static_cast<int>(orientation);
    line["presented"] = presented;
    line["views"] = ordered_json::array({describe(*controller.displayView())});
    if (controller.currentMode() == DisplayMode::SideBySide)
        line["views"].push_back(describe(*controller.virtualDisplayView()));
    write(line);
}

void Trace::write(const ordered_json& record) {
    if (!file_.is_open())
        return;
    // A log line may quote bytes that are not UTF-8, such as a file name.
    file_ << record.dump(-1, ' ', false, ordered_json::error_handler_t::replace) << '\n';
}
