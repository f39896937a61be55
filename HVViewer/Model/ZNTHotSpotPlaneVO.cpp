#include "HVViewer/Model/ZNTHotSpotPlaneVO.h"

#include "Platform/Foundation/Screen.h"

ZNTHotSpotPlaneVO::ZNTHotSpotPlaneVO() {
    ZNTHotSpotPlaneVO::buildModel();
}

void ZNTHotSpotPlaneVO::buildModel() {
    const platform::Size native = platform::Screen::mainScreen().nativeBounds().size;
    setModel(
        arrays_.buildPlane(static_cast<float>(native.width) / static_cast<float>(native.height)));
}
