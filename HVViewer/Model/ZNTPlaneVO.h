#pragma once

#include "HVViewer/Model/MeshArrays.h"
#include "HVViewer/Model/ZNTVisualObjectProtocol.h"

/// The plane of the flat image: 1 wide, and as high as the ratio of the screen's width to its
/// height in portrait. It has the shape that the screen had when it was built.
class ZNTPlaneVO final : public ZNTVisualObjectProtocol {
public:
    ZNTPlaneVO();
    void buildModel() override;

private:
    MeshArrays arrays_;
};
