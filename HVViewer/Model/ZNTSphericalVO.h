#pragma once

#include "HVViewer/Model/MeshArrays.h"
#include "HVViewer/Model/ZNTVisualObjectProtocol.h"

/// The unit sphere as 90 rings of 180 quads, seen from its inside.
///
/// u grows with the azimuth, from 0 at the half-plane x = 0, y <= 0 to 1 after a whole rotation; v
/// grows from 0 at the pole z = -1 to 1 at the pole z = +1.
class ZNTSphericalVO final : public ZNTVisualObjectProtocol {
public:
    ZNTSphericalVO();
    void buildModel() override;

private:
    MeshArrays arrays_;
};
