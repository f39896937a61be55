#pragma once

#include "HVViewer/Model/DisplayMode.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Graphics/GLKMath.h"
#include "Platform/Interface/Application.h"

#include <optional>

/// What a frame's camera is made of.
struct SceneCameraInputs {
    DisplayMode mode = DisplayMode::Sphere;
    platform::InterfaceOrientation orientation = platform::InterfaceOrientation::Unknown;
    platform::Size size;
    double farZ = 1;
    /// The interactor's: zoom factor, pitch, yaw, offset of the flat picture.
    double scale = 1;
    GLKMatrix4 view = GLKMatrix4Identity;
    GLKMatrix4 rotation = GLKMatrix4Identity;
    GLKMatrix4 translation = GLKMatrix4Identity;
    /// The device's attitude while it steers the camera.
    std::optional<GLKMatrix4> motion;
    /// Radians about the model's z axis, after everything else.
    float rotationOffset = 0;
};

/// The camera of one frame.
struct SceneCamera {
    /// Vertical, in degrees, before the zoom.
    double fieldOfViewDegrees = 0;
    double aspect = 0;
    /// How far the scene is moved along z, away from the eye if negative.
    double distance = 0;
    GLKMatrix4 modelViewProjection{};
};

[[nodiscard]] double fieldOfViewDegrees(DisplayMode mode,
                                        platform::InterfaceOrientation orientation);
[[nodiscard]] double cameraDistance(DisplayMode mode, platform::InterfaceOrientation orientation,
                                    double farZ);

/// Perspective × translation by the distance × view × rotation.
[[nodiscard]] SceneCamera composeCamera(const SceneCameraInputs& inputs);
