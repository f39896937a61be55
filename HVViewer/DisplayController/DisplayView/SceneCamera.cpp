#include "HVViewer/DisplayController/DisplayView/SceneCamera.h"

#include "HVViewer/Utilities/ZNTMath.h"

#include <numbers>

namespace {

constexpr double kLittlePlanetPortraitExtraDegrees = 10.0;
constexpr double kSphereLandscapeDistance = 0.40312;
constexpr double kLittlePlanetDistance = -0.9F;
constexpr float kQuarterTurn = std::numbers::pi_v<float> / 2;

/// Projection × view × rotation, where `projection` already contains the distance of the camera.
GLKMatrix4 placeModel(const SceneCameraInputs& inputs, const GLKMatrix4& projection) {
    GLKMatrix4 view = inputs.view;
    GLKMatrix4 rotation = inputs.rotation;
    if (inputs.motion) {
        rotation = GLKMatrix4Multiply(*inputs.motion, rotation);
    } else if (inputs.mode == DisplayMode::Plane) {
        rotation = inputs.translation;
    } else {
        // The model's z axis points up. The attitude of the device already contains this rotation.
        view = GLKMatrix4Rotate(view, -kQuarterTurn, 1, 0, 0);
    }
    rotation = GLKMatrix4Rotate(rotation, inputs.rotationOffset, 0, 0, 1);
    return GLKMatrix4Multiply(GLKMatrix4Multiply(projection, view), rotation);
}

} // namespace

double fieldOfViewDegrees(DisplayMode mode, platform::InterfaceOrientation orientation) {
    if (mode != DisplayMode::LittlePlanet)
        return ViewAngle;
    return platform::isPortrait(orientation)
               ? ViewAngleLittlePlanet + kLittlePlanetPortraitExtraDegrees
               : ViewAngleLittlePlanet;
}

double cameraDistance(DisplayMode mode, platform::InterfaceOrientation orientation, double farZ) {
    switch (mode) {
    case DisplayMode::Sphere:
        return platform::isLandscape(orientation) ? kSphereLandscapeDistance : 0.0;
    case DisplayMode::LittlePlanet:
        return kLittlePlanetDistance;
    case DisplayMode::SideBySide:
        return 0.0;
    case DisplayMode::Plane:
        break;
    }
    return -(1.0 / farZ);
}

SceneCamera composeCamera(const SceneCameraInputs& inputs) {
    SceneCamera camera;
    camera.fieldOfViewDegrees = fieldOfViewDegrees(inputs.mode, inputs.orientation);
    camera.aspect = inputs.size.width / inputs.size.height;
    camera.distance = cameraDistance(inputs.mode, inputs.orientation, inputs.farZ);
    const double fovy = DegToRad(camera.fieldOfViewDegrees) / inputs.scale;
    const GLKMatrix4 perspective =
        GLKMatrix4MakePerspective(static_cast<float>(fovy), static_cast<float>(camera.aspect),
                                  static_cast<float>(NearZ), static_cast<float>(inputs.farZ));
    const GLKMatrix4 translation =
        GLKMatrix4MakeTranslation(0, 0, static_cast<float>(camera.distance));
    camera.modelViewProjection = placeModel(inputs, GLKMatrix4Multiply(perspective, translation));
    return camera;
}
