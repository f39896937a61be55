#pragma once

#include "HVViewer/Model/MeshArrays.h"
#include "HVViewer/Model/ZNTVisualObjectProtocol.h"

/// A marker's quad: as the picture's plane, but twice as tall.
/// The shape is that of the screen when it was built.
class ZNTHotSpotPlaneVO final : public ZNTVisualObjectProtocol {
public:
    ZNTHotSpotPlaneVO();
    void buildModel() override;

private:
    MeshArrays arrays_;
};
