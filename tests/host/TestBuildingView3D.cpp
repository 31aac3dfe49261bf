#include "HostFixture.h"

#include <BuildingView3D.h>
#include <MaterialTest.h>
#include <ProjectDocument.h>

#include <QSignalSpy>
#include <QTest>
#include <QWindow>

/// The building in space is picked, framed and shown with the materials that its document has.
class TestBuildingView3D : public MaterialTest {
    Q_OBJECT

private slots:
    void init()
    {
        m_host = std::make_unique<HostFixture>();
        m_document = std::make_unique<ProjectDocument>(m_host->library(), "en");
        QVERIFY(m_document->startNew(m_host->options().sampleProject()));
        m_view = std::make_unique<BuildingView3D>(
            m_host->manager(), [this](const QString& elementId) { return m_document->materialOf(elementId); });
        m_view->setBuilding(m_document->building());
        m_view->resize(320, 260);
        m_view->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
        QVERIFY(!m_view->drawing().isNull());
    }

    void clickPicksAndDragTurns()
    {
        const QSignalSpy clicked(m_view.get(), &BuildingView3D::elementClicked);
        const QSignalSpy activated(m_view.get(), &BuildingView3D::elementDoubleClicked);
        for (const QString& id : {QString("roof"), QString("ground-wall"), QString("sofa"), QString("lawn")}) {
            const QPoint point = pointIn(id);
            QVERIFY2(point.x() >= 0, qPrintable(id + " is not seen"));
            QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, point);
            QCOMPARE(clicked.last().value(0).toString(), id);
        }
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, {3, 3});
        QCOMPARE(clicked.last().value(0).toString(), QString());

        const QImage front = m_view->drawing();
        const int clicks = clicked.size();
        QWindow* window = m_view->windowHandle();  // only its moves tell of the button
        QTest::mousePress(window, Qt::LeftButton, {}, {150, 130});
        for (int x = 150; x <= 200; x += 10)
            QTest::mouseMove(window, {x, 130});
        QTest::mouseRelease(window, Qt::LeftButton, {}, {200, 130});
        QCOMPARE(clicked.size(), clicks);
        QVERIFY(m_view->drawing() != front);

        QTest::mouseDClick(m_view.get(), Qt::LeftButton, {}, pointIn("roof"));
        QCOMPARE(activated.size(), 1);
        QCOMPARE(activated.last().value(0).toString(), QString("roof"));
    }

    void frameLeavesTheMaterial()
    {
        const QImage before = m_view->drawing();
        const QPoint point = pointIn("roof");
        m_view->select("roof");
        QVERIFY(m_view->drawing() == before);
        QCOMPARE(m_view->elementAt(point), QString("roof"));
    }

    void materialShowsAtOnce()
    {
        const QImage before = m_view->drawing();
        const QPoint wall = pointIn("upper-wall");
        const QPoint roof = pointIn("chimney");
        m_document->assign("upper-wall", m_host->systemMaterial("Palace red"));
        m_view->refresh("upper-wall");
        const QImage after = m_view->drawing();
        QVERIFY(after.pixelColor(wall) != before.pixelColor(wall));
        QCOMPARE(after.pixelColor(roof), before.pixelColor(roof));
    }

    void zoomsBackToTheFront()
    {
        const QImage front = m_view->drawing();
        const double scale = m_view->pixelsPerMetre();
        m_view->zoomBy(2);
        QVERIFY(qAbs(m_view->pixelsPerMetre() / scale - 2) < 1e-6);
        QVERIFY(m_view->drawing() != front);
        m_view->zoomToFit();
        QVERIFY(m_view->drawing() == front);
    }

    void cleanup()
    {
        m_view.reset();
        m_document.reset();
        m_host.reset();
    }

private:
    QPoint pointIn(const QString& elementId)
    {
        const QRect place = m_view->placeOf(elementId);
        for (int y = place.top(); y <= place.bottom(); y += 2)
            for (int x = place.left(); x <= place.right(); x += 2)
                if (m_view->elementAt({x, y}) == elementId)
                    return {x, y};
        return {-1, -1};
    }

    std::unique_ptr<HostFixture> m_host;
    std::unique_ptr<ProjectDocument> m_document;
    std::unique_ptr<BuildingView3D> m_view;
};

MATERIAL_TEST_MAIN(TestBuildingView3D)
#include "TestBuildingView3D.moc"
