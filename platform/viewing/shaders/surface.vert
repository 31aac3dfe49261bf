uniform mat4 mvpMatrix;
attribute vec3 attrVertex;
attribute vec3 attrNormal;
varying vec3 position;
varying vec3 normal;
#ifdef HAS_RELIEF
attribute vec4 attrTangent;
varying vec4 tangent;
#endif
#if defined(HAS_RELIEF) || defined(HAS_BASE_TEXTURE)
attribute vec2 attrTexCoord0;
varying vec2 textureCoordinate;
#endif
invariant gl_Position;

void main()
{
    position = attrVertex;
    normal = attrNormal;
#ifdef HAS_RELIEF
    tangent = attrTangent;
#endif
#if defined(HAS_RELIEF) || defined(HAS_BASE_TEXTURE)
    textureCoordinate = attrTexCoord0;
#endif
    gl_Position = mvpMatrix * vec4(attrVertex, 1.0);
}
