// A clear body: it mirrors at its surface and lets through, bent and tinted, what lies behind. What lies behind is the sky
// where it is known and whatever was drawn before where it is not: that share goes through the alpha.
void glass(inout Surface s)
{
    vec3 f0 = normalReflectance(s);
    float cosView = clamp(dot(s.normal, s.view), 1e-3, 1.0);
    vec3 f = fresnel(f0, cosView);
    vec3 mirrored = mirroredLight(reflect(-s.view, s.normal), s.roughness) * f;
    vec3 lamp = lampLight(s, f0) - s.albedo * (1.0 - f) * lampRadiance * cosView;
    // Tint grows with the way through the glass.
    vec3 tint = pow(max(s.albedo, vec3(0.02)), vec3(mix(2.0, 0.7, cosView)));
    vec3 body = s.albedo * diffuseLight(s.normal) * (1.0 - f);
#if defined(HAS_SKY) && defined(REFRACTS_SKY)
    vec3 bent = refract(-s.view, s.normal, 1.0 / clamp(ior, 1.0, 3.0));
    vec3 through = mix(mirroredLight(bent, s.roughness) * tint * (1.0 - f), body, s.alpha);
    s.alpha = 1.0;
#else
    float reflected = clamp(max(f.r, max(f.g, f.b)), 0.0, 1.0);
    vec3 through = body * s.alpha;
    s.alpha = clamp(s.alpha + reflected * (1.0 - s.alpha), 0.0, 1.0);
    through /= max(s.alpha, 1e-3);
    mirrored /= max(s.alpha, 1e-3);
#endif
    s.color = through + mirrored + max(lamp, vec3(0.0)) + ownLight();
}
