// What the material and the scene hand over, and the surface point that the parts work on. Which of it there is was
// decided when the program was made (EnSurfaceFeature): a software renderer computes both sides of each branch.

varying vec3 position;
varying vec3 normal;
#ifdef HAS_RELIEF
varying vec4 tangent;
#endif
#if defined(HAS_RELIEF) || defined(HAS_BASE_TEXTURE)
varying vec2 textureCoordinate;
#endif

uniform vec3 eye;
uniform float lampRadiance;  // that a white facing surface reflects

// Colours come in linear light.
uniform vec4 baseColor;
uniform float alpha;
uniform float roughness;
uniform float metallic;
uniform float ior;
uniform sampler2D baseTexture;
uniform mat3 baseTrf;
uniform sampler2D bumpTexture;
uniform mat3 bumpTrf;
uniform float bumpStrength;
uniform vec4 lightColor;
uniform float lightPower;

struct Surface {
    vec3 normal;
    vec3 view;       // towards the eye
    vec3 albedo;     // linear light
    float roughness; // perceptual
    float metallic;
    float alpha;
    vec3 color;      // the result, linear light
};

const float PI = 3.14159265359;

// Within a tenth of a step of 1/255 of the exact curve. Roots are cheap, a power is a logarithm and an exponential.
vec3 encodeSrgb(vec3 c)
{
    vec3 root = sqrt(c);
    vec3 curve = 0.8337486 * root + 0.2981108 * sqrt(root) - 0.0553143 * c - 0.0769040;
    return mix(c * 12.92, curve, step(0.0031308, c));
}

// The same up to 0.6, then bent towards 1 without a kink: a mid-grey stays a mid-grey, and highlights keep their drawing.
vec3 toneCurve(vec3 c)
{
    return mix(c, 1.0 - 0.4 * exp((0.6 - c) / 0.4), step(0.6, c));
}

#if defined(HAS_RELIEF) || defined(HAS_BASE_TEXTURE)
vec2 textureAt(mat3 transform)
{
    vec2 place = (transform * vec3(textureCoordinate, 1.0)).xy;
    // No number, or one so large that nothing is left behind its point, is nowhere on the picture.
    return all(lessThan(abs(place), vec2(1e6))) ? place : vec2(0.0);
}
#endif

#ifdef HAS_RELIEF
vec3 reliefNormal(vec3 smoothNormal)
{
    vec3 texel = texture2D(bumpTexture, textureAt(bumpTrf)).rgb * 2.0 - 1.0;
    texel.xy *= clamp(bumpStrength, -16.0, 16.0);
    // The picture's axes, turned with the texture on the surface; a mirrored picture mirrors its relief.
    vec2 right = normalize(vec2(bumpTrf[0][0], bumpTrf[1][0]) + vec2(1e-9, 0.0));
    vec2 up = normalize(vec2(bumpTrf[0][1], bumpTrf[1][1]) + vec2(0.0, 1e-9));
    vec3 t = normalize(tangent.xyz - smoothNormal * dot(smoothNormal, tangent.xyz));
    vec3 b = cross(smoothNormal, t) * tangent.w;
    vec2 slope = texel.x * right + texel.y * up;
    return normalize(t * slope.x + b * slope.y + smoothNormal * max(texel.z, 0.05));
}
#endif

Surface surfaceHere()
{
    Surface s;
    s.view = normalize(eye - position);
    vec3 smoothNormal = normalize(normal);
    smoothNormal = dot(smoothNormal, s.view) < 0.0 ? -smoothNormal : smoothNormal;
#ifdef HAS_RELIEF
    s.normal = reliefNormal(smoothNormal);
#else
    s.normal = smoothNormal;
#endif
#ifdef HAS_BASE_TEXTURE
    vec4 texel = texture2D(baseTexture, textureAt(baseTrf));
#else
    vec4 texel = vec4(baseColor.rgb, 1.0);
#endif
    s.albedo = texel.rgb;
    s.alpha = clamp(alpha * texel.a, 0.0, 1.0);
    s.roughness = clamp(roughness, 0.03, 1.0);
    s.metallic = clamp(metallic, 0.0, 1.0);
    s.color = vec3(0.0);
    return s;
}
