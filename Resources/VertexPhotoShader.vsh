attribute vec3 a_position;
attribute vec2 a_textureCoord;

uniform mat4 u_modelViewProjectionMatrix;

varying highp vec2 v_textureCoord;

void main() {
    // Meshes have v = 1 at the top, textures have the picture's first row at v = 0.
    v_textureCoord = vec2(a_textureCoord.x, 1.0 - a_textureCoord.y);
    gl_Position = u_modelViewProjectionMatrix * vec4(a_position, 1.0);
}
