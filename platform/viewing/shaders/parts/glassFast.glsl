void glassFast(inout Surface s)
{
    float cosView = clamp(dot(s.normal, s.view), 1e-3, 1.0);
    vec3 f = fresnel(normalReflectance(s), cosView);
    s.color = s.albedo * diffuseLight(s.normal) * (1.0 - f) + mirroredLight(reflect(-s.view, s.normal), s.roughness) * f
        + ownLight();
    s.alpha = clamp(s.alpha + f.g * (1.0 - s.alpha), 0.0, 1.0);
}
