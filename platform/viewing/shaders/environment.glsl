// Light from the surroundings. Without any, a uniform grey of radiance AMBIENT on all sides.

uniform samplerCube environment;
uniform float environmentLevels;
uniform sampler2D brdfTable;
uniform vec3 irradiance[9];

const float AMBIENT = 0.5;

// Where a direction of the world lies on the cube of the sky.
vec3 onCube(vec3 direction)
{
    return vec3(direction.x, -direction.z, direction.y);
}

// Irradiance over pi (Ramamoorthi and Hanrahan 2001).
vec3 skyIrradiance(vec3 direction)
{
    vec3 d = onCube(direction);
    vec3 sum = irradiance[0] * 0.282095
        + (irradiance[1] * d.y + irradiance[2] * d.z + irradiance[3] * d.x) * 0.488603
        + (irradiance[4] * d.x * d.y + irradiance[5] * d.y * d.z + irradiance[7] * d.x * d.z) * 1.092548
        + irradiance[6] * (3.0 * d.z * d.z - 1.0) * 0.315392
        + irradiance[8] * (d.x * d.x - d.y * d.y) * 0.546274;
    return max(sum, vec3(0.0));
}

vec3 diffuseLight(vec3 direction)
{
#ifdef HAS_SKY
    return skyIrradiance(direction);
#else
    return vec3(AMBIENT);
#endif
}

// What a lobe of the roughness receives from around a direction.
vec3 mirroredLight(vec3 direction, float lobeRoughness)
{
#if defined(HAS_SKY) && defined(MIRRORS_SKY)
    return textureCubeLod(environment, onCube(direction), lobeRoughness * (environmentLevels - 1.0)).rgb;
#else
    return diffuseLight(direction);
#endif
}

// Image-based light with the energy that a single bounce loses given back (Fdez-Aguera 2019): white stays white.
vec3 environmentLight(Surface s, vec3 f0)
{
    float cosView = clamp(dot(s.normal, s.view), 1e-3, 1.0);
    vec2 table = texture2D(brdfTable, vec2(cosView, s.roughness)).rg;
    vec3 single = f0 * table.x + table.y;
    float escaped = 1.0 - (table.x + table.y);
    vec3 average = f0 + (1.0 - f0) / 21.0;
    vec3 multiple = single * average / (1.0 - escaped * average) * escaped;
    vec3 diffuse = s.albedo * (1.0 - s.metallic) * (1.0 - single - multiple);
    vec3 around = diffuseLight(s.normal);
    return mirroredLight(reflect(-s.view, s.normal), s.roughness) * single + around * (multiple + diffuse);
}

// The same without the table and the second bounces (Karis 2014, "Physically Based Shading on Mobile").
vec3 environmentLightFast(Surface s, vec3 f0)
{
    float cosView = clamp(dot(s.normal, s.view), 1e-3, 1.0);
    vec4 r = s.roughness * vec4(-1.0, -0.0275, -0.572, 0.022) + vec4(1.0, 0.0425, 1.04, -0.04);
    float a004 = min(r.x * r.x, exp2(-9.28 * cosView)) * r.x + r.y;
    vec2 table = vec2(-1.04, 1.04) * a004 + r.zw;
    vec3 single = f0 * table.x + table.y;
    return mirroredLight(reflect(-s.view, s.normal), s.roughness) * single +
        diffuseLight(s.normal) * s.albedo * (1.0 - s.metallic) * (1.0 - single);
}

vec3 ownLight()
{
    return lightColor.rgb * max(lightPower, 0.0);
}
