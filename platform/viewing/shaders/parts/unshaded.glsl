// The plain colour, without any light.
void unshaded(inout Surface s)
{
    s.color = s.albedo;
}
