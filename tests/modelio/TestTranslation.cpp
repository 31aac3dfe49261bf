#include "LibraryFixture.h"
#include "MaterialTest.h"

#include <kiv/StateSet.h>

#include <cmath>

using namespace kiv;

Q_DECLARE_METATYPE(EnTextureWrap)

/// What of an appearance reaches the surface that is drawn; nothing is drawn for it.
class TestTranslation : public MaterialTest {
    Q_OBJECT

private slots:
    void init() { m_stateSet = new CStateSet; }

    void levelAndTypeChooseTheShader_data()
    {
        using Manager = CAppearanceLibraryManager;
        const auto row = testColumns<QString, int, QString>("type", "level", "parts");
        row("no shading", "Generic", Manager::ShaderNone, "generic");
        row("default", "Generic", Manager::ShaderDefault, "generic");
        row("fast", "Generic", Manager::ShaderFast, "genericFast");
        row("of another type", "Glass", Manager::ShaderDefault, "glass");
        row("of another type, fast", "Glass", Manager::ShaderFast, "glassFast");
        row("of an unknown type", "Velvet", Manager::ShaderDefault, "generic");
    }

    void levelAndTypeChooseTheShader()
    {
        QFETCH(QString, type);
        QFETCH(int, level);
        m_fixture.manager().SetShaderLevelOfDetail(CAppearanceLibraryManager::EnShaderLevelOfDetail(level));
        QVERIFY(translate(read(QString(R"({"template":"%1","roughness":0.125,"useBaseTexture":true})").arg(type))));
        QCOMPARE(int(m_stateSet->GetShading()), level);
        QCOMPARE(m_stateSet->GetShaderParts().size(), std::size_t(1));
        QTEST(QString::fromStdString(m_stateSet->GetShaderParts()[0]), "parts");
        QCOMPARE(m_stateSet->Get("roughness", 0.0F), 0.125F);
        QVERIFY(m_stateSet->Get("useBaseTexture", false));
        QCOMPARE(m_stateSet->Get("baseTrf", CMatrix3<float>())(0, 0), 1.0F);
        QVERIFY(!m_stateSet->IsUsingPreEnvironmentMap());
    }

    void texturesAreRepeatedAsTheySay_data()
    {
        const auto row = testColumns<int, int, EnTextureWrap, EnTextureWrap>("h", "v", "wrapU", "wrapV");
        row("repeated", 0, 0, EnTextureWrap::Repeat, EnTextureWrap::Repeat);
        row("mirrored sideways", 1, 0, EnTextureWrap::MirroredRepeat, EnTextureWrap::Repeat);
        row("mirrored upwards, clamped sideways", 2, 1, EnTextureWrap::Clamp, EnTextureWrap::MirroredRepeat);
        row("neither is known", 3, -1, EnTextureWrap::Repeat, EnTextureWrap::Repeat);
    }

    void texturesAreRepeatedAsTheySay()
    {
        QFETCH(int, h);
        QFETCH(int, v);
        const auto appearance = m_fixture.makeAppearance("brick", "brick.png", "bumps.png");
        for (const auto& texture : {appearance->GetDiffuseTexture(), appearance->GetBumpTexture()}) {
            texture->SetProperty("repeat_h", MakePropertyValue(h));
            texture->SetProperty("repeat_v", MakePropertyValue(v));
        }
        QVERIFY(translate(appearance));
        QCOMPARE(m_stateSet->GetTextures().size(), std::size_t(2));
        const CTextureBinding& colours = m_stateSet->GetTextures().at("baseTexture");
        const CTextureBinding& slopes = m_stateSet->GetTextures().at("bumpTexture");
        QVERIFY(colours.isColor && !slopes.isColor);
        QCOMPARE(colours.file, m_fixture.widePath("textures/brick.png"));
        QCOMPARE(slopes.file, m_fixture.widePath("textures/bumps.png"));
        for (const CTextureBinding& texture : {colours, slopes}) {
            QTEST(texture.wrapU, "wrapU");
            QTEST(texture.wrapV, "wrapV");
        }
    }

    void alphaBelowOneIsTransparent()
    {
        const auto appearance = m_fixture.makeAppearance("pane");
        for (const float alpha : {1.0F, 0.999F, 0.0F, NAN}) {
            appearance->SetProperty("transparent", MakePropertyValue(alpha));
            QVERIFY(translate(appearance));
            QCOMPARE(m_stateSet->IsTransparent(), alpha < 1);
        }
    }

    void nothingOfTheLastOneStays()
    {
        m_fixture.manager().UsePreEnvironmentMap(true);
        QVERIFY(translate(m_fixture.makeAppearance("first", "brick.png", "bumps.png")));
        m_fixture.manager().UsePreEnvironmentMap(false);
        QVERIFY(m_stateSet->IsUsingPreEnvironmentMap());
        QVERIFY(!translate(nullptr) && m_stateSet->GetTextures().size() == 2);
        QVERIFY(translate(m_fixture.makeAppearance("second", "..\\out.png")));
        QVERIFY(m_stateSet->GetTextures().empty() && !m_stateSet->IsUsingPreEnvironmentMap());
    }

private:
    CAppearanceInstancePtr read(const QString& document)
    {
        return CAppearanceParser(m_fixture.manager()).AppearanceFromString(document.toStdString());
    }
    bool translate(const CAppearanceInstancePtr& appearance)
    {
        return m_fixture.manager().Translate(appearance, m_stateSet.get());
    }

    LibraryFixture m_fixture;
    GRefPtr<CStateSet> m_stateSet;
};

MATERIAL_TEST_MAIN(TestTranslation)
#include "TestTranslation.moc"
