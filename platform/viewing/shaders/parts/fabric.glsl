// Cloth and carpet: fibres at the rim catch light, "Charlie" distribution (Estevez and Kulla 2017) with the visibility of
// Neubelt and Pettineo (2013), over a diffuse ground.
void fabric(inout Surface s)
{
    float cosView = clamp(dot(s.normal, s.view), 1e-3, 1.0);
    float rim = pow(1.0 - cosView, mix(4.0, 2.0, s.roughness));
    vec3 sheen = sqrt(clamp(s.albedo, 0.0, 1.0)) * 0.35 * rim;
    float inverse = 1.0 / max(s.roughness * s.roughness, 0.05);
    float sine = sqrt(max(1.0 - cosView * cosView, 0.0));
    float charlie = (2.0 + inverse) * pow(sine, inverse) / (2.0 * PI);
    float neubelt = 1.0 / (4.0 * (2.0 * cosView - cosView * cosView));
    vec3 ground = s.albedo * (1.0 - sheen);
    vec3 around = diffuseLight(s.normal);
    float lamp = lampRadiance * cosView;
    s.color = around * (ground + sheen) + (ground + PI * sheen * charlie * neubelt) * lamp + ownLight();
}
