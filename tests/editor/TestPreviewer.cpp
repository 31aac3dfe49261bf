#include <AppearancePreviewerCtrl.h>
#include <ColorButton.h>
#include <SceneWidget.h>

#include <LibraryFixture.h>
#include <MaterialTest.h>
#include <Measured.h>
#include <ModalMeeting.h>

#include <kiv/Viewer.h>

#include <QColorDialog>
#include <QComboBox>
#include <QMenu>
#include <QToolButton>

using Level = kiv::CAppearanceLibraryManager::EnShaderLevelOfDetail;

/// The panel with the preview: what it offers and what it hands on.
class TestPreviewer : public MaterialTest {
    Q_OBJECT

private slots:
    void init()
    {
        m_previewer.reset();
        m_fixture = std::make_unique<LibraryFixture>();
        m_previewer = std::make_unique<CAppearancePreviewerCtrl>(m_fixture->manager(), nullptr);
    }

    void offersShapesAndShading()
    {
        const auto* shapes = find<QComboBox>("shapeCombo");
        QStringList offered;
        for (int i = 0; i < shapes->count(); ++i)
            offered += shapes->itemText(i) + shapes->itemData(i).toString();
        QCOMPARE(offered, QStringList({"Cylinder0", "Sphere1", "Box2", "Surface3"}));
        const auto* shading = find<QComboBox>("shadingCombo");
        QCOMPARE(shading->count(), 2);
        QCOMPARE(shading->itemText(0) + shading->itemText(1), QString("Fast ShaderDefault Shader"));
        m_previewer->show();
        waitUntilReady();
        const int height = m_previewer->GetSceneWidget()->height();
        QVERIFY2(height >= 50 && height <= 100, qPrintable(QString::number(height)));
        for (const auto* button : m_previewer->findChildren<QAbstractButton*>())
            QCOMPARE(button->isVisible(), button->objectName() == "backgroundButton");
    }

    void shadingStartsAsTheManagerHasIt()
    {
        const char* const texts[] = {"", "Default Shader", "Fast Shader"};  // none is not offered
        for (const int level : {0, 1, 2}) {
            m_fixture->manager().SetShaderLevelOfDetail(Level(level));
            const CAppearancePreviewerCtrl previewer(m_fixture->manager(), nullptr);
            QCOMPARE(previewer.findChild<QComboBox*>("shadingCombo")->currentText(), QString(texts[level]));
            QCOMPARE(int(m_fixture->manager().GetShaderLevelOfDetail()), level);
        }
    }

    void showsTheAppearance()
    {
        waitUntilReady();
        m_previewer->SetAppearance(nullptr);
        QVERIFY(!stateSet());
        const auto appearance = m_fixture->makeAppearance("red");
        m_previewer->SetAppearance(appearance);
        QCOMPARE(m_previewer->GetAppearance(), appearance);
        const GRefPtr<const kiv::CStateSet> first(stateSet());
        // The surroundings are for this translation alone: the next one may be for a building.
        QVERIFY(first->IsUsingPreEnvironmentMap());
        QVERIFY(!m_fixture->manager().IsUsingPreEnvironmentMap());
        QVERIFY(!first->GetUniforms().empty());

        kiv::CCamera& camera = m_previewer->GetSceneWidget()->GetViewer()->GetCamera();
        camera.Orbit(0.7, 0);
        const double yaw = camera.GetYaw();
        m_previewer->SetAppearance(m_fixture->makeAppearance("other"));
        QVERIFY(stateSet() != first.get());
        QCOMPARE(camera.GetYaw(), yaw);
    }

    void choosesShapes()
    {
        waitUntilReady();
        const kiv::CVisualNode* node = m_previewer->GetSceneWidget()->GetPreviewNode();
        for (const char* shape : {"Surface", "Box", "Sphere", "Cylinder"}) {
            const auto before = node->GetRenderable();
            find<QComboBox>("shapeCombo")->setCurrentText(shape);
            QVERIFY(node->GetRenderable() != before);
        }
    }

    void choosesShading()
    {
        waitUntilReady();
        auto* combo = find<QComboBox>("shadingCombo");
        combo->addItem("No Shader");
        m_previewer->SetAppearance(m_fixture->makeAppearance("any"));
        QList<int> told;
        connect(m_previewer.get(), &CAppearancePreviewerCtrl::InitcurrentLod, [&](Level level) { told += level; });
        for (const auto& [text, level] : {std::pair("Fast Shader", 2), {"No Shader", 0}, {"Default Shader", 1}}) {
            combo->setCurrentText(text);
            QCOMPARE(int(m_fixture->manager().GetShaderLevelOfDetail()), level);
            QCOMPARE(int(stateSet()->GetShading()), level);
            QVERIFY(!m_fixture->manager().IsUsingPreEnvironmentMap());
        }
        QCOMPARE(told, QList<int>({2, 0, 1}));
    }

    void changesTheBackground()
    {
        auto* button = find<QColorButton>("colorButton");
        QVERIFY(!button->isShowName() && button->text().isEmpty());
        QCOMPARE(button->color(), m_previewer->GetSceneWidget()->GetBackgroundColor());
        button->setColor(Qt::green);
        QCOMPARE(m_previewer->GetSceneWidget()->GetBackgroundColor(), QColor(Qt::green));
        waitUntilReady();
        QCOMPARE(m_previewer->GetSceneWidget()->GetViewer()->GetBackgroundColor().g, 255);
    }

    void offersBackgrounds()
    {
        for (const char* side : {"back", "front", "left", "right", "top", "bottom"})
            m_fixture->write(QString("textures/skybox/cube01_%1.jpg").arg(side), makePicture(Qt::red, "JPG"));
        m_previewer->show();
        waitUntilReady();
        const QMenu* menu = find<QToolButton>("backgroundButton")->menu();
        const auto choose = [&](int entry) { menu->actions().at(entry)->trigger(); };
        QCOMPARE(menu->actions().size(), 6);
        QVERIFY(menu->actions().first()->isChecked());
        const QColor sky = corner();
        QVERIFY2(sky.red() > 2 * sky.green(), qPrintable(sky.name()));
        const QColor colors[] = {Qt::white, QColor(200, 200, 200), QColor(70, 70, 70), Qt::black};
        for (int i = 0; i < 4; ++i) {
            choose(i + 1);
            QCOMPARE(corner(), colors[i]);
        }
        ModalMeeting<QColorDialog> meeting([](QColorDialog& dialog) {
            dialog.setCurrentColor(Qt::green);
            dialog.accept();
        });
        choose(5);
        QCOMPARE(corner(), QColor(Qt::green));
        choose(0);
        QCOMPARE(corner(), sky);
    }

    void actionsAreForTheHost()
    {
        QStringList texts;
        for (const auto* button : m_previewer->findChildren<QToolButton*>()) {
            if (button == find<QToolButton>("backgroundButton"))
                continue;
            texts += button->text();
        }
        texts.sort();
        QStringList expected{u8"应用到场景", u8"保存到库中", u8"添加材质", u8"删除材质"};
        expected.sort();
        QCOMPARE(texts, expected);
        m_previewer->show();
        m_previewer->OnShowBrowser(true);
        auto* save = find<QToolButton>("saveButton");
        QVERIFY(save->isVisible() && !m_previewer->GetApplyButton()->isVisible());

        const auto appearance = m_fixture->makeAppearance("kept");
        m_previewer->SetAppearance(appearance);
        kiv::CAppearanceInstancePtr saved;
        connect(m_previewer.get(), &CAppearancePreviewerCtrl::SaveAppearance,
                [&](const kiv::CAppearanceInstancePtr& instance) { saved = instance; });
        QTest::mousePress(save, Qt::LeftButton);
        QCOMPARE(saved, appearance);
        QTest::mouseRelease(save, Qt::LeftButton);
        m_previewer->OnShowBrowser(false);
        QVERIFY(!save->isVisible());
    }

protected:
    void finish() override { m_previewer.reset(); }

private:
    template <typename Widget>
    Widget* find(const char* name) const
    {
        return m_previewer->findChild<Widget*>(name);
    }
    /// With the viewer there and both ticks done.
    void waitUntilReady() const
    {
        const CSceneWidget& scene = *m_previewer->GetSceneWidget();
        QTRY_VERIFY(scene.GetViewer() && scene.GetPreviewNode()->GetRenderable());
    }
    /// The colour of a pixel beside the body.
    QColor corner() const
    {
        constexpr int side = 32;
        return pictureOf(*m_previewer->GetSceneWidget()->GetViewer(), side, side).pixelColor(1, 1);
    }
    const kiv::CStateSet* stateSet() const { return m_previewer->GetSceneWidget()->GetPreviewNode()->GetStateSet(); }

    std::unique_ptr<LibraryFixture> m_fixture;
    std::unique_ptr<CAppearancePreviewerCtrl> m_previewer;
};

MATERIAL_TEST_MAIN(TestPreviewer)
#include "TestPreviewer.moc"
