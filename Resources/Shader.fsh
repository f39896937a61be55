#ifdef GL_FRAGMENT_PRECISION_HIGH
precision highp float;
#else
precision mediump float;
#endif

uniform sampler2D u_texture;
uniform int u_enableColorPicking;
uniform vec3 u_color;

varying vec2 v_texCoord;

void main() {
    if (u_enableColorPicking != 0) {
        // Opaque, so that blending hands the identity on as it is.
        gl_FragColor = vec4(u_color, 1.0);
        return;
    }
    // Textures hold colours multiplied by alpha, blending multiplies once more.
    vec4 texel = texture2D(u_texture, v_texCoord);
    gl_FragColor = vec4(texel.rgb / max(texel.a, 0.001), texel.a);
}
