#include "HostFixture.h"

#include <BuildingMesh.h>
#include <BuildingSolids.h>
#include <OutlineTriangles.h>
#include <ProjectDocument.h>

#include <MaterialTest.h>

#include <kiv/VectorMath.h>

#include <QImage>
#include <QPainter>

#include <cmath>
#include <map>
#include <tuple>

using Vec3 = kiv::CVec3<float>;

namespace {

/// The area inside, counted on a picture of it.
double areaOf(const QPainterPath& outline)
{
    constexpr double pixelsPerMetre = 80;
    const QRectF bounds = outline.boundingRect().adjusted(-0.1, -0.1, 0.1, 0.1);
    QImage picture((bounds.size() * pixelsPerMetre).toSize(), QImage::Format_Grayscale8);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixelsPerMetre, pixelsPerMetre);
    painter.translate(-bounds.topLeft());
    painter.fillPath(outline, Qt::white);
    double area = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            area += picture.constScanLine(y)[x] / 255.0;
    return area / (pixelsPerMetre * pixelsPerMetre);
}

double areaOf(const OutlineTriangles& flat)
{
    double area = 0;
    for (const auto& t : flat.triangles()) {
        const QPointF u = flat.points()[t[1]] - flat.points()[t[0]];
        const QPointF v = flat.points()[t[2]] - flat.points()[t[0]];
        area += (u.x() * v.y() - v.x() * u.y()) / 2;
    }
    return area;
}

using Place = std::tuple<float, float, float>;

Place placeOf(const Vec3& v)
{
    return {v.x, v.y, v.z};
}

/// Edges that are not met by one of the opposite direction, by place.
int openEdges(const kiv::CTriangleMesh& mesh)
{
    std::map<std::pair<Place, Place>, int> balance;
    for (std::size_t i = 0; i < mesh.indices.size(); ++i) {
        const std::size_t next = i % 3 == 2 ? i - 2 : i + 1;
        const Place a = placeOf(mesh.vertices[mesh.indices[i]]);
        const Place b = placeOf(mesh.vertices[mesh.indices[next]]);
        if (a != b)
            balance[a < b ? std::make_pair(a, b) : std::make_pair(b, a)] += a < b ? 1 : -1;
    }
    int open = 0;
    for (const auto& edge : balance)
        open += edge.second != 0;
    return open;
}

double volumeOf(const kiv::CTriangleMesh& mesh)
{
    double volume = 0;
    for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
        const auto corner = [&](std::size_t k) { return kiv::VectorCast<double>(mesh.vertices[mesh.indices[i + k]]); };
        volume += kiv::Dot(corner(0), kiv::Cross(corner(1), corner(2))) / 6;
    }
    return volume;
}

/// The largest share by which a triangle's side is longer or shorter on the texture than in the world.
double textureError(const kiv::CTriangleMesh& mesh)
{
    double error = 0;
    for (std::size_t i = 0; i < mesh.indices.size(); ++i) {
        const unsigned a = mesh.indices[i];
        const unsigned b = mesh.indices[i % 3 == 2 ? i - 2 : i + 1];
        const double real = double(kiv::Length(mesh.vertices[b] - mesh.vertices[a]));
        const kiv::CVec2<float> on = mesh.textureCoordinates[b] - mesh.textureCoordinates[a];
        if (real > 0.05)  // single precision, 60 metres from the origin
            error = std::max(error, std::abs(std::hypot(double(on.x), double(on.y)) / real - 1));
    }
    return error;
}

}  // namespace

class TestBuildingMesh : public MaterialTest {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ProjectDocument document(m_host.library(), "en");
        QVERIFY(document.startNew(m_host.options().sampleProject()));
        m_building = document.building();
    }

    void frontsKeepTheirArea()
    {
        for (const BuildingElement& element : m_building.elements) {
            const OutlineTriangles flat(element.outline);
            const double area = areaOf(element.outline);
            QVERIFY2(area > 0 && std::abs(areaOf(flat) / area - 1) < 0.015,
                     qPrintable(QString("%1: %2 instead of %3").arg(element.id).arg(areaOf(flat)).arg(area)));
        }
    }

    void bodiesAreClosedAndInRealSize()
    {
        for (const BuildingElement& element : m_building.elements) {
            const kiv::CTriangleMesh mesh = BuildingMesh(element, m_building.extent).mesh();
            QVERIFY2(!element.takesMaterial() || volumeOf(mesh) > 0, qPrintable(element.id));
            QVERIFY2(openEdges(mesh) == 0, qPrintable(QString("%1: %2").arg(element.id).arg(openEdges(mesh))));
            if (!element.round)
                QVERIFY2(textureError(mesh) < 0.01,
                         qPrintable(QString("%1: %2").arg(element.id).arg(textureError(mesh))));
            for (const Vec3& normal : mesh.normals)
                QVERIFY2(std::abs(kiv::Length(normal) - 1) < 1e-3F, qPrintable(element.id));
        }
    }

    // Projects need not say what their elements are in space.
    void ruleGivesEveryElementABody()
    {
        for (BuildingElement element : m_building.elements) {
            element.solids.clear();
            const kiv::CTriangleMesh mesh = BuildingMesh(element, m_building.extent).mesh();
            if (element.takesMaterial())
                QVERIFY2(volumeOf(mesh) > 0 && openEdges(mesh) == 0, qPrintable(element.id));
        }
    }

    void leaningBodyKeepsItsVolume()
    {
        BuildingElement hut;
        hut.startMaterial = "any";
        BuildingSolid solid;
        solid.outline.addRect(0, 1, 4, 2);
        solid.front = 1;
        solid.back = -3;
        solid.lean = solid.backLean = 1;  // a ridge where both meet, two metres up
        hut.solids = {solid};
        const kiv::CTriangleMesh mesh = BuildingMesh(hut, QRectF(-10, -10, 20, 20)).mesh();
        QCOMPARE(openEdges(mesh), 0);
        QVERIFY(std::abs(volumeOf(mesh) - 16) < 1e-3);
        QVERIFY(textureError(mesh) < 1e-3);
    }

private:
    HostFixture m_host;
    Building m_building;
};

MATERIAL_TEST_MAIN(TestBuildingMesh)
#include "TestBuildingMesh.moc"
