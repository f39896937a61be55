#pragma once

#include "HVViewer/Model/MeshArrays.h"
#include "HVViewer/Model/ZNTVisualObjectProtocol.h"

/// The flat picture: as wide as 1 and as tall as the screen is wide to high, portrait-up.
/// The shape is that of the screen when it was built.
class ZNTPlaneVO final : public ZNTVisualObjectProtocol {
public:
    ZNTPlaneVO();
    void buildModel() override;

private:
    MeshArrays arrays_;
};
