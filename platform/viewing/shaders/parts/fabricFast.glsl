void fabricFast(inout Surface s)
{
    float cosView = max(dot(s.normal, s.view), 0.0);
    s.color = s.albedo * (diffuseLight(s.normal) + lampRadiance * cosView) + ownLight();
}
