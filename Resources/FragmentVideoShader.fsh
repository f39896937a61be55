// Medium precision cannot tell the columns of a large panorama apart, but some devices have no more.
#ifdef GL_FRAGMENT_PRECISION_HIGH
precision highp float;
#else
precision mediump float;
#endif

uniform sampler2D SamplerY;
uniform sampler2D SamplerUV;
uniform mat3 colorConversionMatrix;
uniform int u_enableColorPicking;

varying vec2 v_textureCoord;

// Video range: luma begins at 16, chroma is centred on 128.
const vec3 kRangeOffset = vec3(16.0, 128.0, 128.0) / 255.0;

void main() {
    vec3 yuv = vec3(texture2D(SamplerY, v_textureCoord).r,
                    texture2D(SamplerUV, v_textureCoord).ra) - kRangeOffset;
    // Each column of the matrix weighs (Y, Cb, Cr) for one channel, hence the row vector.
    vec3 rgb = yuv * colorConversionMatrix;
    // In a picking frame the content is opaque black, so that only markers carry an identity.
    gl_FragColor = vec4(u_enableColorPicking != 0 ? vec3(0.0) : rgb, 1.0);
}
