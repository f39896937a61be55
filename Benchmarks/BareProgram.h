#pragma once

#include <cstdint>
#include <string>

/// Shows one texture's colours.
inline constexpr const char* kTextureShader =
    "precision highp float;"
    "uniform sampler2D u_texture;"
    "varying highp vec2 v_place;"
    "void main() { gl_FragColor = texture2D(u_texture, v_place); }";

/// The least program that shows a texture: the floors are drawn with it.
class BareProgram {
public:
    /// `vertexShader` sets `gl_Position` and `v_place`, where in the texture; its attributes are
    /// bound in the order given.
    BareProgram(const std::string& vertexShader, const char* firstAttribute,
                const char* secondAttribute = nullptr, const char* fragmentShader = kTextureShader);
    ~BareProgram();
    BareProgram(const BareProgram&) = delete;
    BareProgram& operator=(const BareProgram&) = delete;

    /// With the texture on unit 0.
    void use(std::uint32_t texture) const;
    [[nodiscard]] std::int32_t uniform(const char* name) const;

private:
    std::uint32_t name_;
};
