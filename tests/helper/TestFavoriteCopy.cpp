#include <LibraryFixture.h>
#include <MaterialHelper.h>
#include <MaterialTest.h>
#include <ModalMeeting.h>

#include <QAbstractButton>
#include <QMessageBox>

#include <memory>

using kiv::CMaterialHelper;

namespace {

constexpr char PictureSha[] = "UserLib Textures\\";

}  // namespace

/// What becomes of an appearance that is made a favourite, and what lies on disk then.
class TestFavoriteCopy : public MaterialTest {
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<LibraryFixture>(); }

    void storesDocumentAndTextures()
    {
        const auto source = makeSource();
        const auto favorite = add(source, "Ceiling");
        QVERIFY(favorite);
        QCOMPARE(favorite->GetName(), source->GetName());
        QCOMPARE(favorite->GetCategory(), kiv::String("Ceiling"));
        QCOMPARE(favorite->GetEditType(), 0);
        QCOMPARE(favorite->GetBumpTexture()->GetTextureFile(), kiv::String());
        QCOMPARE(source->GetBumpTexture()->GetTextureFile(), kiv::String("bump.png"));

        const QByteArray picture = m_fixture->read("textures/red.png");
        const auto pictureHash = CMaterialHelper::HashBytes(picture.data(), picture.size());
        QCOMPARE(favorite->GetDiffuseTexture()->GetTextureFile(), PictureSha + pictureHash);

        // The id is the digest of the document without name and id.
        const auto nameless = favorite->Clone({});
        nameless->SetName({});
        const QByteArray text = m_fixture->document(nameless);
        QCOMPARE(favorite->GetId(), CMaterialHelper::HashBytes(text.data(), text.size()));

        const QMap<QString, QByteArray> expected{
            {"Favorite Library/", {}},
            {"Favorite Library/" + QString::fromStdString(favorite->GetId()) + ".json", m_fixture->document(favorite)},
            {"UserLib Textures/", {}},
            {"UserLib Textures/" + QString::fromStdString(pictureHash), picture}};
        QCOMPARE(m_fixture->tree("favorites"), expected);
    }

    void tellsOfADuplicate()
    {
        const auto source = makeSource();
        QVERIFY(add(source, "Stone"));
        const auto before = m_fixture->tree("favorites");
        source->SetName("another name of the same look");
        QStringList texts;
        ModalMeeting<QMessageBox> meeting([&](QMessageBox& box) {
            texts += {box.windowTitle(), box.text()};
            QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
        });
        QVERIFY(!add(source, "Stone"));
        QCOMPARE(texts, QStringList({u8"提示", u8"该材质已经被收藏过了！"}));
        QCOMPARE(m_fixture->tree("favorites"), before);
        QVERIFY(add(source, "Wood"));
    }

    void setsMetalValues()
    {
        const auto source = m_fixture->makeAppearance("plain");
        const auto metal = add(source, "Metal");
        QVERIFY(metal);
        QCOMPARE(metal->ValueOr("metallic", 0.0f), 1.0f);
        QCOMPARE(metal->ValueOr("useEnvironmentMap", false), true);
        const auto stone = add(source, "Stone");
        QCOMPARE(stone->ValueOr("metallic", -1.0f), source->ValueOr("metallic", 0.0f));
        QCOMPARE(stone->ValueOr("useEnvironmentMap", true), source->ValueOr("useEnvironmentMap", false));
    }

    void leavesNothingBehindOnFailure()
    {
        const auto before = m_fixture->tree("favorites");
        QVERIFY(!add(nullptr, "Stone"));
        QVERIFY(!add(m_fixture->makeAppearance("x", "missing.png"), "Stone"));
        QCOMPARE(m_fixture->tree("favorites"), before);

        m_fixture->write("favorites/Favorite Library", "a file where a folder should be");
        QVERIFY(!add(m_fixture->makeAppearance("x"), "Stone"));
        m_fixture->manager().SetFavoriteLibraryPath({});
        QVERIFY(!add(m_fixture->makeAppearance("x"), "Stone"));
    }

private:
    kiv::CAppearanceInstancePtr add(const kiv::CAppearanceInstancePtr& source, const char* category)
    {
        return CMaterialHelper::AddFavorite(source, category, m_fixture->manager(), &m_fixture->library());
    }
    kiv::CAppearanceInstancePtr makeSource()
    {
        const QByteArray picture = makePicture(Qt::red, "PNG");
        m_fixture->write("textures/red.png", picture);
        m_fixture->write("textures/bump.png", picture);
        const auto source = m_fixture->makeAppearance("source", "red.png", "bump.png");
        source->SetName(u8"红砖");
        source->SetEditType(1);
        return source;
    }

    std::unique_ptr<LibraryFixture> m_fixture;
};

MATERIAL_TEST_MAIN(TestFavoriteCopy)
#include "TestFavoriteCopy.moc"
