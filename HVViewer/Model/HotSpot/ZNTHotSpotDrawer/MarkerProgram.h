#pragma once

#include <cstdint>
#include <string>

/// The shader program that draws markers: their pictures, or the colours that tell them apart.
///
/// Owner:  a hot spot drawer. Every call needs the GL context to be current; so does the end.
/// Thread: main.
class MarkerProgram {
public:
    struct Uniforms {
        std::int32_t matrix = -1;
        std::int32_t texture = -1;
        std::int32_t enableColorPicking = -1;
        std::int32_t color = -1;
    };

    /// Errors: false, and log lines that say why; nothing can be drawn then.
    bool loadShaders();
    /// Asks the driver whether the program can run in the GL state of this moment, for the hunt
    /// after a faulty driver; what it has to say goes to the log.
    [[nodiscard]] bool validateProgram() const;
    /// Deletes the program.
    void tearDown();
    /// The names belong to a context that is gone.
    void forget() { name_ = 0; }

    /// 0 without a program.
    [[nodiscard]] std::uint32_t name() const { return name_; }
    [[nodiscard]] const Uniforms& uniforms() const { return uniforms_; }
    /// The attribute that takes texture coordinates; positions are attribute 0.
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
