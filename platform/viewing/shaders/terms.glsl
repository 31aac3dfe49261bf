// The terms of the shading model, each in one place. docs/shading.md names the sources.

// Normal distribution: GGX (Walter et al. 2007), alpha is the square of the roughness.
float distribution(float cosHalf, float alphaSquare)
{
    float d = cosHalf * cosHalf * (alphaSquare - 1.0) + 1.0;
    return alphaSquare / (PI * d * d);
}

// Masking and shadowing over 4 cosLight cosView: Smith, correlated with height (Heitz 2014), where the light comes from
// the eye.
float visibility(float cosView, float alphaSquare)
{
    return 0.25 / max(cosView * sqrt(cosView * cosView * (1.0 - alphaSquare) + alphaSquare), 1e-5);
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
    float c = clamp(1.0 - cosine, 0.0, 1.0);
    return f0 + (1.0 - f0) * (c * c * c * c * c);
}

vec3 normalReflectance(Surface s)
{
    return mix(vec3(reflectance(clamp(ior, 1.0, 3.0))), s.albedo, s.metallic);
}

// The lamp at the eye: Lambert below, GGX above. Halfway between light and view is the view, where Fresnel's term is
// that of normal incidence.
vec3 lampLight(Surface s, vec3 f0)
{
    float cosView = max(dot(s.normal, s.view), 0.0);
    float alphaRoughness = s.roughness * s.roughness;
    // A lamp is no point: the smallest highlight that it makes has its own size.
    float alphaSquare = max(alphaRoughness * alphaRoughness, 1e-3);
    float lobe = distribution(cosView, alphaSquare) * visibility(cosView, alphaSquare);
    vec3 diffuse = (1.0 - f0) * (1.0 - s.metallic) * s.albedo;
    return (diffuse + PI * f0 * lobe) * cosView * lampRadiance;
}
