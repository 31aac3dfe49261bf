// The old model of simple materials: Lambert and a Blinn highlight whose size is the shininess.
uniform float shininess;
uniform vec4 specularColor;

void phong(inout Surface s)
{
    float facing = max(dot(s.normal, s.view), 0.0);
    float exponent = mix(4.0, 256.0, clamp(shininess, 0.0, 1.0));
    vec3 highlight = specularColor.rgb * pow(facing, exponent);
    s.color = s.albedo * (diffuseLight(s.normal) + lampRadiance * facing) + highlight * lampRadiance
        + ownLight();
}
