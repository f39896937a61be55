#pragma once

#include "HVViewer/Model/MeshArrays.h"
#include "HVViewer/Model/ZNTVisualObjectProtocol.h"

/// The quad of a marker: like the plane of the flat image, but twice as high. It has the shape that
/// the screen had when it was built.
class ZNTHotSpotPlaneVO final : public ZNTVisualObjectProtocol {
public:
    ZNTHotSpotPlaneVO();
    void buildModel() override;

private:
    MeshArrays arrays_;
};
