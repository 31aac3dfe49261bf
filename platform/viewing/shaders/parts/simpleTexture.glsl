// A picture as it is, lit evenly.
void simpleTexture(inout Surface s)
{
    float facing = max(dot(s.normal, s.view), 0.0);
    s.color = s.albedo * (diffuseLight(s.normal) + lampRadiance * facing);
}
