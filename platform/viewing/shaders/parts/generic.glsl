// Any opaque surface, dielectric or metal.
void generic(inout Surface s)
{
    vec3 f0 = normalReflectance(s);
    s.color = environmentLight(s, f0) + lampLight(s, f0) + ownLight();
}
