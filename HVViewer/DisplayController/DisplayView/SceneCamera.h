#pragma once

#include "HVViewer/Model/DisplayMode.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Graphics/GLKMath.h"
#include "Platform/Interface/Application.h"

#include <optional>

/// The inputs of a frame's camera.
struct SceneCameraInputs {
    DisplayMode mode = DisplayMode::Sphere;
    platform::InterfaceOrientation orientation = platform::InterfaceOrientation::Unknown;
    platform::Size size;
    double farZ = 1;
    /// From the interactor: zoom factor, pitch, yaw, translation of the flat image.
    double scale = 1;
    GLKMatrix4 view = GLKMatrix4Identity;
    GLKMatrix4 rotation = GLKMatrix4Identity;
    GLKMatrix4 translation = GLKMatrix4Identity;
    /// The attitude of the device, if device motion is on.
    std::optional<GLKMatrix4> motion;
    /// Radians about the model's z axis, applied after everything else.
    float rotationOffset = 0;
};

/// The camera of one frame.
struct SceneCamera {
    /// Vertical, in degrees, before the zoom is applied.
    double fieldOfViewDegrees = 0;
    double aspect = 0;
    /// Translation of the scene along z; negative is away from the eye.
    double distance = 0;
    GLKMatrix4 modelViewProjection{};
};

[[nodiscard]] double fieldOfViewDegrees(DisplayMode mode,
                                        platform::InterfaceOrientation orientation);
[[nodiscard]] double cameraDistance(DisplayMode mode, platform::InterfaceOrientation orientation,
                                    double farZ);

/// Computes perspective × translation by the distance × view × rotation.
[[nodiscard]] SceneCamera composeCamera(const SceneCameraInputs& inputs);
