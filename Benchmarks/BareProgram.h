#pragma once

#include <cstdint>
#include <string>

/// Samples one texture.
inline constexpr const char* kTextureShader =
    "precision highp float;"
    "uniform sampler2D u_texture;"
    "varying highp vec2 v_place;"
    "void main() { gl_FragColor = texture2D(u_texture, v_place); }";

/// A minimal program that draws a texture; the baselines are drawn with it.
class BareProgram {
public:
    /// `vertexShader` sets `gl_Position` and `v_place`, the texture coordinates; its attributes are
    /// bound in the given order.
    BareProgram(const std::string& vertexShader, const char* firstAttribute,
                const char* secondAttribute = nullptr, const char* fragmentShader = kTextureShader);
    ~BareProgram();
    BareProgram(const BareProgram&) = delete;
    BareProgram& operator=(const BareProgram&) = delete;

    /// Binds the texture to unit 0.
    void use(std::uint32_t texture) const;
    [[nodiscard]] std::int32_t uniform(const char* name) const;

private:
    std::uint32_t name_;
};
