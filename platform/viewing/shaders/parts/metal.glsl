// A conductor: its colour is what it mirrors. The less it is one, the more of a coat of paint it shows.
void metal(inout Surface s)
{
    vec3 f0 = normalReflectance(s);
    s.color = environmentLight(s, f0) + lampLight(s, f0) + ownLight();
}
