uniform mat4 mvpMatrix;
attribute vec3 attrVertex;
attribute vec3 attrNormal;
attribute vec2 attrTexCoord0;
attribute vec4 attrTangent;
varying vec3 position;
varying vec3 normal;
varying vec4 tangent;
varying vec2 textureCoordinate;
invariant gl_Position;

void main()
{
    position = attrVertex;
    normal = attrNormal;
    tangent = attrTangent;
    textureCoordinate = attrTexCoord0;
    gl_Position = mvpMatrix * vec4(attrVertex, 1.0);
}
