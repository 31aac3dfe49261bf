#include "BrdfTable.h"
#include "EnvironmentLighting.h"
#include "HalfFloat.h"
#include "Sky.h"

#include <MaterialTest.h>

#include <QDir>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cmath>
#include <functional>

using namespace kiv;

namespace {

constexpr double Pi = 3.14159265358979323846;
using Vector = CVec3<double>;

double dot(const Vector& a, const Vector& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector normalized(const Vector& v)
{
    const double length = std::sqrt(dot(v, v));
    return {v.x / length, v.y / length, v.z / length};
}

Vector randomDirection()
{
    auto& random = *QRandomGenerator::global();
    for (;;) {
        const Vector v{random.bounded(2.0) - 1, random.bounded(2.0) - 1, random.bounded(2.0) - 1};
        if (dot(v, v) < 1 && dot(v, v) > 0.01)
            return normalized(v);
    }
}

struct Place {
    std::size_t face;
    int x, y;
};

/// The table of OpenGL, as it stands in its description: major axis, sc, tc.
Place openGlPlace(const Vector& r, int size)
{
    const double ax = std::abs(r.x), ay = std::abs(r.y), az = std::abs(r.z);
    std::size_t face;
    double sc, tc, ma;
    if (ax >= ay && ax >= az)
        face = r.x > 0 ? 0 : 1, sc = r.x > 0 ? -r.z : r.z, tc = -r.y, ma = ax;
    else if (ay >= az)
        face = r.y > 0 ? 2 : 3, sc = r.x, tc = r.y > 0 ? r.z : -r.z, ma = ay;
    else
        face = r.z > 0 ? 4 : 5, sc = r.z > 0 ? r.x : -r.x, tc = -r.y, ma = az;
    const auto texel = [size, ma](double c) { return std::min(size - 1, int((c / ma + 1) / 2 * size)); };
    return {face, texel(sc), texel(tc)};
}

/// The direction that the program of the sky box looks a direction of the world up at.
Vector lookedUp(const Vector& world)
{
    return {world.x, -world.z, world.y};
}

CCubeFaces uniformFaces(int size, QRgb color)
{
    CCubeFaces faces;
    for (QImage& face : faces) {
        face = QImage(size, size, QImage::Format_RGBA8888);
        face.fill(QColor::fromRgb(color));
    }
    return faces;
}

/// A dark sky with one white face, which is +x of the cube map.
CCubeFaces oneBrightFace(int size)
{
    CCubeFaces faces = uniformFaces(size, Qt::black);
    faces[0].fill(Qt::white);
    return faces;
}

double brightFace(const Vector& d)
{
    return d.x > std::abs(d.y) && d.x > std::abs(d.z) ? 1 : 0;
}

double harmonicSum(const CEnvironmentLighting& lighting, const Vector& d)
{
    const double basis[9] = {0.282095,
                             0.488603 * d.y,
                             0.488603 * d.z,
                             0.488603 * d.x,
                             1.092548 * d.x * d.y,
                             1.092548 * d.y * d.z,
                             0.315392 * (3 * d.z * d.z - 1),
                             1.092548 * d.x * d.z,
                             0.546274 * (d.x * d.x - d.y * d.y)};
    double sum = 0;
    for (std::size_t i = 0; i < 9; ++i)
        sum += double(lighting.irradiance[i].x) * basis[i];
    return sum;
}

float levelValue(const CEnvironmentLighting& lighting, std::size_t level, const Vector& d)
{
    const int size = lighting.size >> level;
    const Place place = openGlPlace(d, size);
    return FromHalfBits(lighting.levels[level][((place.face * size + place.y) * size + place.x) * 4]);
}

/// The centre of the texel that the direction hits, so that a coarse level is compared where it is stored.
Vector texelCentre(const Vector& d, int size)
{
    const double largest = std::max({std::abs(d.x), std::abs(d.y), std::abs(d.z)});
    const auto centre = [&](double c) {
        const double scaled = c / largest;
        return std::abs(scaled) == 1 ? scaled : (std::floor((scaled + 1) / 2 * size) + 0.5) / size * 2 - 1;
    };
    return normalized({centre(d.x), centre(d.y), centre(d.z)});
}

/// The mean of the sky over the sphere, each direction weighted.
double weightedMean(const std::function<double(const Vector&)>& sky, const std::function<double(const Vector&)>& weight)
{
    double sum = 0, weights = 0;
    constexpr int steps = 600;
    for (int i = 0; i < steps; ++i) {
        const double z = (i + 0.5) / steps * 2 - 1, ring = std::sqrt(1 - z * z);
        for (int j = 0; j < 2 * steps; ++j) {
            const double angle = (j + 0.5) / steps * Pi;
            const Vector d{ring * std::cos(angle), ring * std::sin(angle), z};
            const double w = weight(d);
            sum += w * sky(d);
            weights += w;
        }
    }
    return sum / weights;
}

/// The GGX lobe seen along the normal, weighted by the cosine of the light.
double lobe(const Vector& normal, const Vector& light, double alpha)
{
    const double cosine = dot(normal, light);
    if (cosine <= 0)
        return 0;
    const double halfSquare = (1 + cosine) / 2, base = halfSquare * (alpha * alpha - 1) + 1;
    return cosine / (base * base);
}

/// Scale and bias of F0 by plain integration over the hemisphere of lights.
std::pair<double, double> integratedBrdf(double cosine, double roughness)
{
    const double alpha = roughness * roughness, square = alpha * alpha;
    const Vector view{std::sqrt(1 - cosine * cosine), 0, cosine};
    double scale = 0, bias = 0;
    constexpr int steps = 800;
    for (int i = 0; i < steps; ++i) {
        const double z = (i + 0.5) / steps, ring = std::sqrt(1 - z * z);
        for (int j = 0; j < 2 * steps; ++j) {
            const double angle = (j + 0.5) / steps * Pi;
            const Vector light{ring * std::cos(angle), ring * std::sin(angle), z};
            const Vector h = normalized({view.x + light.x, light.y, view.z + light.z});
            const double base = h.z * h.z * (square - 1) + 1, distribution = square / (Pi * base * base);
            const double visibility = 0.5 / (z * std::sqrt(cosine * cosine * (1 - square) + square) +
                                             cosine * std::sqrt(z * z * (1 - square) + square));
            const double value = distribution * visibility * z * Pi / (double(steps) * steps);
            const double fresnel = std::pow(1 - dot(view, h), 5);
            scale += value * (1 - fresnel);
            bias += value * fresnel;
        }
    }
    return {scale, bias};
}

QDir cacheFolder()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + "/environment-lighting");
}

bool areSame(const CEnvironmentLighting& a, const CEnvironmentLighting& b)
{
    return a.size == b.size && a.levels == b.levels && a.irradiance == b.irradiance;
}

int difference(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

/// A colour that tells the direction.
QRgb paint(const Vector& d)
{
    const auto byte = [](double c) { return int(std::lround((c + 1) / 2 * 255)); };
    return qRgb(byte(d.x), byte(d.y), byte(d.z));
}

/// What a pixel of a picture of the sky box looks at in the world, as the order of its pictures is documented.
Vector seenFrom(std::size_t picture, double u, double v)
{
    const double right = 2 * u - 1, up = 1 - 2 * v;
    const Vector seen[6] = {{right, 1, up},  {-right, -1, up}, {-1, right, up},
                            {1, -right, up}, {right, -up, 1},  {right, up, -1}};
    return normalized(seen[picture]);
}

std::array<QImage, 6> paintedPictures(const std::array<QSize, 6>& sizes)
{
    std::array<QImage, 6> pictures;
    for (std::size_t i = 0; i < 6; ++i) {
        const int width = sizes[i].width(), height = sizes[i].height(), cut = std::min(width, height);
        pictures[i] = QImage(sizes[i], QImage::Format_RGB32);
        const int left = (width - cut) / 2, top = (height - cut) / 2;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                pictures[i].setPixel(x, y, paint(seenFrom(i, (x + 0.5 - left) / cut, (y + 0.5 - top) / cut)));
    }
    return pictures;
}

}  // namespace

class TestLighting : public MaterialTest {
    Q_OBJECT

protected:
    void prepare() override { cacheFolder().removeRecursively(); }
    void finish() override { cacheFolder().removeRecursively(); }

private slots:
    void facesAreFoundWhereOpenGlLooks()
    {
        constexpr int size = 128;
        const QSize square(size, size), wide(size + 40, size), large(size + 64, size + 104);
        for (const auto& sizes : {std::array{square, square, square, square, square, square},
                                  std::array{square, wide, large, large, wide, large}}) {
            CCubeFaces faces;
            QString reason;
            QVERIFY(CubeFacesOfSky(paintedPictures(sizes), MaxSkySide, faces, reason));
            for (int i = 0; i < 20000; ++i) {
                const Vector world = randomDirection();
                const Place place = openGlPlace(lookedUp(world), size);
                const QImage& face = faces[place.face];
                QCOMPARE(face.size(), QSize(size, size));
                QCOMPARE(face.format(), QImage::Format_RGBA8888);
                QVERIFY(difference(face.pixel(place.x, place.y), paint(world)) <= 4);
            }
        }
    }

    void badFacesAreRefusedOrScaled()
    {
        std::array<QImage, 6> pictures = paintedPictures({QSize(16384, 16), {1, 1}, {2, 2}, {2, 2}, {3, 1}, {1, 9}});
        CCubeFaces faces;
        QString reason;
        QVERIFY(CubeFacesOfSky(pictures, MaxSkySide, faces, reason));
        QCOMPARE(faces[3].size(), QSize(1, 1));
        const CEnvironmentLighting lighting = PrepareLighting(faces);
        QCOMPARE(lighting.size, 8);
        QCOMPARE(lighting.levels.size(), std::size_t(2));

        pictures[4] = QImage();
        const CCubeFaces before = faces;
        QVERIFY(!CubeFacesOfSky(pictures, MaxSkySide, faces, reason));
        QVERIFY2(reason.contains("top"), qPrintable(reason));
        QVERIFY(faces == before);
        faces[2] = QImage(4, 4, QImage::Format_RGBA8888);
        QVERIFY(PrepareLighting(faces).IsEmpty());
        QVERIFY(CachedLighting(CCubeFaces()).IsEmpty());

        // No longer than the graphics card takes.
        pictures.fill(QImage(300, 310, QImage::Format_RGB32));
        for (const auto& [most, side] : {std::pair(64, 64), {299, 299}, {MaxSkySide, 300}}) {
            QVERIFY(CubeFacesOfSky(pictures, most, faces, reason));
            QCOMPARE(faces[0].size(), QSize(side, side));
        }
    }

    void whiteFurnace_data()
    {
        const auto row = testColumns<int, int, int>("side", "size", "levels");
        row("one texel", 1, 8, 2);
        row("no power of two", 100, 64, 5);
        row("reduced", 300, 256, 7);
    }

    void whiteFurnace()
    {
        QFETCH(int, side);
        const CEnvironmentLighting lighting = PrepareLighting(uniformFaces(side, qRgb(255, 255, 255)));
        QTEST(lighting.size, "size");
        QTEST(int(lighting.levels.size()), "levels");
        for (std::size_t level = 0; level < lighting.levels.size(); ++level) {
            const auto edge = std::size_t(lighting.size >> level);
            QCOMPARE(lighting.levels[level].size(), 6 * edge * edge * 4);
            for (const std::uint16_t bits : lighting.levels[level])
                QVERIFY(std::abs(FromHalfBits(bits) - 1) < 0.005f);
        }
        for (int i = 0; i < 1000; ++i)
            QVERIFY(std::abs(harmonicSum(lighting, randomDirection()) - 1) < 0.005);
    }

    void bytesAreDecodedAsSrgb()
    {
        const CEnvironmentLighting lighting = PrepareLighting(uniformFaces(64, qRgb(188, 188, 188)));
        QVERIFY(std::abs(levelValue(lighting, 0, {0, 0, 1}) - 0.5029f) < 0.001f);
        QVERIFY(std::abs(levelValue(lighting, 4, {0, 0, 1}) - 0.5029f) < 0.001f);
    }

    /// Nine harmonics cannot follow an edge exactly; a turned basis or a forgotten factor is off by far more.
    void irradianceIsThatOfBruteForce()
    {
        const CEnvironmentLighting lighting = PrepareLighting(oneBrightFace(128));
        for (const Vector& normal : {Vector{1, 0, 0}, Vector{-1, 0, 0}, Vector{0, 1, 0}, Vector{0, 0, -1},
                                     normalized({1, 1, 0}), normalized({1, -0.5, 0.8}), normalized({-0.4, 1, 1})}) {
            const double expected =
                weightedMean(brightFace, [&](const Vector& d) { return std::max(0.0, dot(d, normal)); });
            const double found = harmonicSum(lighting, normal);
            QVERIFY2(std::abs(found - expected) < 0.03,
                     qPrintable(QStringLiteral("%1, not %2").arg(found).arg(expected)));
        }
    }

    /// In directions across the edge of the bright face, where what is read beside a face counts too.
    void roughLevelsAreThoseOfBruteForce()
    {
        const CEnvironmentLighting lighting = PrepareLighting(oneBrightFace(256));
        for (int level = 1; level < 7; ++level) {
            const double alpha = level / 6.0 * level / 6.0;
            for (int step = 0; step < 12; ++step) {
                const double angle = step * Pi / 12;
                const Vector normal =
                    texelCentre({std::cos(angle), 0.8 * std::sin(angle), -0.6 * std::sin(angle)}, 256 >> level);
                const double expected =
                    weightedMean(brightFace, [&](const Vector& d) { return lobe(normal, d, alpha); });
                const double found = double(levelValue(lighting, std::size_t(level), normal));
                QVERIFY2(std::abs(found - expected) < 0.04,
                         qPrintable(QString("level %1: %2, not %3").arg(level).arg(found).arg(expected)));
            }
        }
    }

    void cacheIsUsedAndRepaired()
    {
        const CCubeFaces faces = oneBrightFace(64);
        const CEnvironmentLighting prepared = PrepareLighting(faces);
        QVERIFY(areSame(CachedLighting(faces), prepared));
        const QFileInfoList files = cacheFolder().entryInfoList(QDir::Files);
        QCOMPARE(files.size(), 1);
        QFile file(files[0].filePath());
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QByteArray whole = file.readAll();

        const auto repaired = [&](const QByteArray& damaged) {
            file.resize(0);
            file.seek(0);
            file.write(damaged);
            file.flush();
            const bool same = areSame(CachedLighting(faces), prepared);
            QFile after(file.fileName());
            return same && after.open(QIODevice::ReadOnly) && after.readAll() == whole;
        };
        for (const int place : {0, 4, 8, 12, 20, 40, whole.size() / 2, whole.size() - 1}) {
            QByteArray altered = whole;
            altered[place] = char(altered[place] ^ 0x55);
            QVERIFY2(repaired(altered), qPrintable(QString::number(place)));
            file.close();
            QVERIFY(file.open(QIODevice::ReadWrite));
        }
        for (const QByteArray& damaged : {QByteArray(), whole.left(10), whole.left(whole.size() / 2), whole + 'x'}) {
            QVERIFY(repaired(damaged));
            file.close();
            QVERIFY(file.open(QIODevice::ReadWrite));
        }
    }

    /// Proved by a file whose light is another sky's: it is under the name of these faces and whole, so it is taken.
    void cachedFileIsRead()
    {
        cacheFolder().removeRecursively();
        const CCubeFaces white = uniformFaces(32, qRgb(255, 255, 255)), grey = uniformFaces(32, qRgb(90, 90, 90));
        CachedLighting(white);
        const QString whiteFile = cacheFolder().entryInfoList(QDir::Files)[0].filePath();
        QVERIFY(QFile::rename(whiteFile, whiteFile + ".kept"));
        const CEnvironmentLighting greyLighting = CachedLighting(grey);
        const QString greyFile = cacheFolder().entryInfoList({"*.light"}, QDir::Files)[0].filePath();
        QVERIFY(greyFile != whiteFile);
        QVERIFY(QFile::copy(greyFile, whiteFile));
        QVERIFY(areSame(CachedLighting(white), greyLighting));
    }

    void cacheStaysSmallAndMayBeMissing()
    {
        for (int i = 0; i < 12; ++i)
            CachedLighting(uniformFaces(8, qRgb(i, i, i)));
        QVERIFY(cacheFolder().entryList({"*.light"}, QDir::Files).size() <= 8);
        cacheFolder().removeRecursively();
        QFile inTheWay(cacheFolder().path());
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        QVERIFY(!CachedLighting(uniformFaces(8, qRgb(1, 2, 3))).IsEmpty());
        QVERIFY(inTheWay.remove());
    }

    void brdfTableIsThatOfBruteForce()
    {
        const std::vector<float>& texels = BrdfTable().texels;
        constexpr int size = CBrdfTable::Size;
        QCOMPARE(texels.size(), std::size_t(size * size * 2));
        for (std::size_t i = 0; i < texels.size(); i += 2)
            QVERIFY(texels[i] >= 0 && texels[i + 1] >= 0 && texels[i] + texels[i + 1] <= 1);
        for (const int x : {1, 6, 15, 24, 31}) {
            for (const int y : {9, 16, 25, 31}) {
                const auto [scale, bias] = integratedBrdf((x + 0.5) / size, (y + 0.5) / size);
                const auto index = std::size_t(y * size + x) * 2;
                QVERIFY2(std::abs(texels[index] - scale) < 0.01 && std::abs(texels[index + 1] - bias) < 0.01,
                         qPrintable(QStringLiteral("%1 %2: %3 %4, not %5 %6")
                                        .arg(x)
                                        .arg(y)
                                        .arg(texels[index])
                                        .arg(texels[index + 1])
                                        .arg(scale)
                                        .arg(bias)));
            }
        }
    }

    /// Texels on both sides of every edge, found by their direction in the world.
    void shippedSkyHasNoSeams()
    {
        constexpr int size = 128;
        QTemporaryDir folder;
        QCOMPARE(makeSky(folder.path(), size), QString());
        std::array<QImage, 6> pictures;
        const char* const names[6] = {"back", "front", "left", "right", "top", "bottom"};
        for (std::size_t i = 0; i < 6; ++i)
            QVERIFY(pictures[i].load(folder.filePath(QStringLiteral("cube01_%1.jpg").arg(names[i]))));
        CCubeFaces faces;
        QString reason;
        QVERIFY(CubeFacesOfSky(pictures, MaxSkySide, faces, reason));
        int compared = 0;
        double sum = 0;
        for (std::size_t picture = 0; picture < 6; ++picture) {
            for (int i = 0; i < size; ++i) {
                for (const auto& [x, y, outX, outY] : {std::array{i, 0, 0, -1}, std::array{i, size - 1, 0, 1},
                                                       std::array{0, i, -1, 0}, std::array{size - 1, i, 1, 0}}) {
                    const auto at = [&](int column, int row) {
                        const Place place =
                            openGlPlace(lookedUp(seenFrom(picture, (column + 0.5) / size, (row + 0.5) / size)), size);
                        return std::pair(place.face, faces[place.face].pixel(place.x, place.y));
                    };
                    const auto [inner, own] = at(x, y);
                    const auto [outer, next] = at(x + outX, y + outY);
                    QVERIFY(inner != outer);
                    QVERIFY2(difference(own, next) < 48, names[picture]);
                    sum += difference(own, next);
                    ++compared;
                }
            }
        }
        QCOMPARE(compared, 24 * size);
        QVERIFY2(sum / compared < 5, qPrintable(QString::number(sum / compared)));
    }
};

MATERIAL_TEST_MAIN(TestLighting)
#include "TestLighting.moc"
