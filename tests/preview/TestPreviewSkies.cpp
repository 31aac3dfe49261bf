// The sky around the body: when it comes, and what cannot be used of it.
#include "MaterialTest.h"
#include "PreviewFixture.h"
#include "TestFiles.h"

#include <PreviewBodies.h>
#include <PreviewSkybox.h>

namespace {

constexpr int Width = 60;
constexpr int Height = 40;
const QPoint Corner(2, 2);
const QColor Background(90, 120, 60);

QColor red(const QString&)
{
    return Qt::red;
}

}  // namespace

class TestPreviewSkies : public MaterialTest {
    Q_OBJECT

private slots:
    void unusableSkies_data()
    {
        const auto row = testColumns<QString>("bytes");
        row("face missing", QString());
        row("face empty", "");
        row("face broken", "this is no picture");
    }

    void unusableSkies()
    {
        QFETCH(QString, bytes);  // null: there is no file
        QTemporaryDir folder;
        const QString face = PreviewFixture::skyFace(PreviewFixture::makeSky(folder.path(), red), "left");
        QVERIFY(QFile::remove(face));
        if (!bytes.isNull())
            writeFile(face, bytes.toUtf8());
        PreviewFixture preview;
        preview.viewer().SetBackgroundColor({90, 120, 60});
        const QImage without = preview.picture(Width, Height);
        preview.setSky(folder.path());
        QCOMPARE(preview.picture(Width, Height), without);
        QCOMPARE(without.pixelColor(Corner), Background);
        QVERIFY2(preview.viewer().GetReason().find("cube01_left.jpg") != std::string::npos,
                 preview.viewer().GetReason().c_str());

        // Once repaired it is shown.
        PreviewFixture::makeSky(folder.path(), red);
        PreviewFixture::setModified(face, QDateTime::currentDateTime().addSecs(1));
        QCOMPARE(preview.picture(Width, Height).pixelColor(Corner), QColor(Qt::red));
        QCOMPARE(preview.viewer().GetReason(), std::string());
    }

    void facesReplacedOnDisk()
    {
        QTemporaryDir folder;
        PreviewFixture preview;
        preview.setSky(PreviewFixture::makeSky(folder.path(), red));
        preview.viewer().SetViewPoint(kiv::CCamera::ViewFront);
        QCOMPARE(preview.picture(Width, Height).pixelColor(Corner), QColor(Qt::red));
        const QString back = PreviewFixture::skyFace(folder.path(), "back");
        PreviewFixture::writePicture(back, {32, 32}, Qt::blue, Qt::blue);
        PreviewFixture::setModified(back, QDateTime::currentDateTime().addSecs(1));
        QCOMPARE(preview.picture(Width, Height).pixelColor(Corner), QColor(Qt::blue));
        QVERIFY(QFile::remove(back));
        QVERIFY(preview.picture(Width, Height).pixelColor(Corner) != QColor(Qt::blue));
        QVERIFY(!preview.viewer().GetReason().empty());
    }

    // The first frame does not wait for the sky, whatever the material would mirror of it.
    void skyArrivesLater()
    {
        QTemporaryDir folder;
        QWidget host;
        host.resize(Width, Height);
        kiv::CViewer viewer(host.winId());
        viewer.GetOptions().SetViewAxesEnabled(false);
        viewer.SetBackgroundColor({90, 120, 60});
        GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
        stateSet->SetShaderParts({"glass"});
        stateSet->SetUsePreEnvironmentMap(true);
        const auto node = std::make_shared<kiv::CVisualNode>("body");
        node->SetRenderable(MakePreviewBody("Sphere"));
        node->SetStateSet(stateSet.get());
        viewer.GetScene().GetRoot()->AddChild(node);
        viewer.ZoomAll();
        const auto corner = [&] { return host.grab().toImage().pixelColor(Corner); };
        SetUpPreviewSkybox(viewer, PreviewFixture::makeSky(folder.path(), red).toStdWString());
        QCOMPARE(corner(), Background);
        QCOMPARE(viewer.GetReason(), std::string());
        QTRY_COMPARE(corner(), QColor(Qt::red));

        // A viewer that is seen draws by itself when the sky has come.
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        for (int round = 0; round < 20; ++round)
            QCoreApplication::processEvents();
        const unsigned before = viewer.GetFrameCount();
        QTemporaryDir second;
        SetUpPreviewSkybox(viewer, PreviewFixture::makeSky(second.path(), red).toStdWString());
        QTRY_VERIFY(viewer.GetFrameCount() >= before + 2);
        QCOMPARE(viewer.GetReason(), std::string());
    }
};

MATERIAL_TEST_MAIN(TestPreviewSkies)
#include "TestPreviewSkies.moc"
