attribute vec3 a_position;
attribute vec2 a_texCoordIn;

uniform mat4 u_modelViewProjectionMatrix;

varying highp vec2 v_texCoord;

void main() {
    // Meshes have v = 1 at the top, textures have the picture's first row at v = 0.
    v_texCoord = vec2(a_texCoordIn.x, 1.0 - a_texCoordIn.y);
    gl_Position = u_modelViewProjectionMatrix * vec4(a_position, 1.0);
}
