// The terms of the shading model, each in one place. docs/shading.md names the sources.

// Normal distribution: GGX (Walter et al. 2007), alpha is the square of the roughness.
float distribution(float cosHalf, float alphaSquare)
{
    float d = cosHalf * cosHalf * (alphaSquare - 1.0) + 1.0;
    return alphaSquare / (PI * d * d);
}

// Masking and shadowing over 4 cosLight cosView: Smith, correlated with height (Heitz 2014).
float visibility(float cosLight, float cosView, float alphaSquare)
{
    float light = cosView * sqrt(cosLight * cosLight * (1.0 - alphaSquare) + alphaSquare);
    float view = cosLight * sqrt(cosView * cosView * (1.0 - alphaSquare) + alphaSquare);
    return 0.5 / max(light + view, 1e-5);
}

// Reflection at normal incidence of a dielectric in air.
float reflectance(float index)
{
    float r = (index - 1.0) / (index + 1.0);
    return r * r;
}

// Fresnel (Schlick 1994).
vec3 fresnel(vec3 f0, float cosine)
{
    return f0 + (1.0 - f0) * pow(clamp(1.0 - cosine, 0.0, 1.0), 5.0);
}

vec3 normalReflectance(Surface s)
{
    return mix(vec3(reflectance(clamp(ior, 1.0, 3.0))), s.albedo, s.metallic);
}

// One lamp of which a white facing surface reflects `radiance`: Lambert below, GGX above.
vec3 lampLight(Surface s, vec3 f0, vec3 toLight, float radiance)
{
    vec3 halfway = normalize(toLight + s.view);
    float cosLight = max(dot(s.normal, toLight), 0.0);
    float cosView = max(dot(s.normal, s.view), 1e-3);
    float alphaRoughness = s.roughness * s.roughness;
    // A lamp is no point: the smallest highlight that it makes has its own size.
    float alphaSquare = max(alphaRoughness * alphaRoughness, 1e-3);
    vec3 f = fresnel(f0, max(dot(s.view, halfway), 0.0));
    float lobe = distribution(max(dot(s.normal, halfway), 0.0), alphaSquare) * visibility(cosLight, cosView, alphaSquare);
    vec3 diffuse = (1.0 - f) * (1.0 - s.metallic) * s.albedo;
    return (diffuse + PI * f * lobe) * cosLight * radiance;
}
