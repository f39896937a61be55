#pragma once

#include <cstdint>
#include <string>

/// The shader program that draws the markers, either with their images or with their picking
/// colours.
///
/// Owner:  a hot spot drawer. The GL context must be current for every call and for the destructor.
/// Thread: main.
class MarkerProgram {
public:
    struct Uniforms {
        std::int32_t matrix = -1;
        std::int32_t texture = -1;
        std::int32_t enableColorPicking = -1;
        std::int32_t color = -1;
    };

    /// Errors: logs the reason and returns false; nothing can be drawn then.
    bool loadShaders();
    /// Asks the driver whether the program can run in the current GL state, and logs its answer.
    /// For debugging of drivers.
    [[nodiscard]] bool validateProgram() const;
    void tearDown();
    /// Forgets the GL names without deleting them, because their context no longer exists.
    void forget() { name_ = 0; }

    /// 0 if there is no program.
    [[nodiscard]] std::uint32_t name() const { return name_; }
    [[nodiscard]] const Uniforms& uniforms() const { return uniforms_; }
    /// The attribute index of the texture coordinates. Positions are attribute 0.
    [[nodiscard]] std::uint32_t textureCoordinates() const { return textureCoordinates_; }

private:
    [[nodiscard]] static bool compileShader(std::uint32_t& shader, std::uint32_t type,
                                            const char* resourceType);
    [[nodiscard]] bool linkProgram() const;
    void readLocations();

    std::uint32_t name_ = 0;
    Uniforms uniforms_;
    std::uint32_t textureCoordinates_ = 0;
};
