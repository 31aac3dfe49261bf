void genericFast(inout Surface s)
{
    vec3 f0 = normalReflectance(s);
    float lamp = lampRadiance * max(dot(s.normal, s.view), 0.0);
    s.color = environmentLightFast(s, f0) + s.albedo * (1.0 - s.metallic) * lamp + ownLight();
}
