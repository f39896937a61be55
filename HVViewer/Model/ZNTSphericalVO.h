#pragma once

#include "HVViewer/Model/MeshArrays.h"
#include "HVViewer/Model/ZNTVisualObjectProtocol.h"

/// The unit sphere, 90 rings of 180 quads, drawn from inside.
///
/// u runs with the azimuth from the half-plane x = 0, y <= 0 all the way round; v runs from the
/// pole z = -1 (0) to the pole z = +1 (1).
class ZNTSphericalVO final : public ZNTVisualObjectProtocol {
public:
    ZNTSphericalVO();
    void buildModel() override;

private:
    MeshArrays arrays_;
};
