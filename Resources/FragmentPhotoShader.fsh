// Medium precision cannot tell the columns of a large panorama apart, but some devices have no more.
#ifdef GL_FRAGMENT_PRECISION_HIGH
precision highp float;
#else
precision mediump float;
#endif

uniform sampler2D u_Sampler;
uniform int u_enableColorPicking;

varying vec2 v_textureCoord;

void main() {
    // In a picking frame the content is opaque black, so that only markers carry an identity.
    gl_FragColor = u_enableColorPicking != 0 ? vec4(0.0, 0.0, 0.0, 1.0)
                                             : texture2D(u_Sampler, v_textureCoord);
}
