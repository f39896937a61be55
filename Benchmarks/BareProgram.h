#pragma once

#include <cstdint>
#include <string>

/// The least program that shows a texture: the floors are drawn with it.
class BareProgram {
public:
    /// `vertexShader` sets `gl_Position` and `v_place`, where in the texture; its attributes are
    /// bound in the order given.
    BareProgram(const std::string& vertexShader, const char* firstAttribute,
                const char* secondAttribute = nullptr);
    ~BareProgram();
    BareProgram(const BareProgram&) = delete;
    BareProgram& operator=(const BareProgram&) = delete;

    /// With the texture on unit 0.
    void use(std::uint32_t texture) const;
    [[nodiscard]] std::int32_t uniform(const char* name) const;

private:
    std::uint32_t name_;
};
