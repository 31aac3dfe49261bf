void metalFast(inout Surface s)
{
    vec3 f0 = normalReflectance(s);
    float facing = max(dot(s.normal, s.view), 0.0);
    s.color = environmentLightFast(s, f0) + mix(s.albedo, f0 * facing * facing, s.metallic) * lampRadiance * facing
        + ownLight();
}
