#include "HVViewer/Model/ZNTPlaneVO.h"

#include "Platform/Foundation/Screen.h"

ZNTPlaneVO::ZNTPlaneVO() {
    ZNTPlaneVO::buildModel();
}

void ZNTPlaneVO::buildModel() {
    const platform::Size native = platform::Screen::mainScreen().nativeBounds().size;
    const float ratio = static_cast<float>(native.width) / static_cast<float>(native.height);
    setModel(arrays_.buildPlane(static_cast<float>(ratio / 2.0)));
}
