#include "SmallDisk.h"

#include <LibraryFixture.h>
#include <MaterialHelper.h>
#include <MaterialTest.h>
#include <ModalMeeting.h>

#include <QAbstractButton>
#include <QMessageBox>

#include <functional>
#include <memory>

using kiv::CMaterialHelper;

namespace {

constexpr char PictureSha[] = "UserLib Textures\\";
constexpr char Picture[] = u8"textures/它的 \"it's\" red.png";

}  // namespace

Q_DECLARE_METATYPE(std::function<bool(LibraryFixture&, SmallDisk&)>)

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

        const QByteArray picture = m_fixture->read(Picture);
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

    void tellsWhyItCannotBeStored_data()
    {
        using Prepare = std::function<bool(LibraryFixture&, SmallDisk&)>;
        const auto row = testColumns<Prepare, QString>("prepare", "file");
        const auto blocked = [](const char* path) {
            return [path](LibraryFixture& fixture, SmallDisk&) {
                fixture.write(path, "a file where a folder should be");
                return true;
            };
        };
        const auto filled = [](bool leaveOne) {
            return [leaveOne](LibraryFixture&, SmallDisk& disk) {
                disk.Fill(leaveOne);
                return true;
            };
        };
        row("no documents", blocked("favorites/Favorite Library"), ".json");
        row("no textures", blocked("favorites/UserLib Textures"), "UserLib Textures");
        row("full disk", filled(false), "UserLib Textures");
        row("full disk behind the texture", filled(true), ".json");
        row(
            "read-only disk", [](LibraryFixture&, SmallDisk& disk) { return disk.MakeReadOnly(); }, "UserLib Textures");
        const auto cannotBeMade = [](LibraryFixture& fixture, SmallDisk&) {
            fixture.manager().SetFavoriteLibraryPath(L"/proc/favorites");
            return true;
        };
        row("folder that nobody can make", cannotBeMade, "/proc/favorites");
        const auto noSource = [](LibraryFixture& fixture, SmallDisk&) { return QFile::remove(fixture.path(Picture)); };
        row("no source", noSource, "red.png");
        const auto noPicture = [](LibraryFixture& fixture, SmallDisk&) {
            fixture.write(Picture, "a letter of the user's");
            return true;
        };
        row("no picture", noPicture, "red.png");
    }

    void tellsWhyItCannotBeStored()
    {
        using Prepare = std::function<bool(LibraryFixture&, SmallDisk&)>;
        QFETCH(Prepare, prepare);
        QFETCH(QString, file);
        const auto source = makeSource();
        const QByteArray sourceText = m_fixture->document(source);
        SmallDisk disk(m_fixture->path("favorites"));
        if (!prepare(*m_fixture, disk))
            QSKIP("nothing stops this process from writing");
        const auto before = filesOf("favorites");
        QStringList texts;
        ModalMeeting<QMessageBox> meeting(
            [&](QMessageBox& box) {
                texts += {box.windowTitle(), box.text()};
                QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
            },
            true);
        QVERIFY(!add(source, "Stone"));
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(texts.size(), 2);
        QCOMPARE(texts[0], QString(u8"提示"));
        const QString form = QString(u8"^收藏失败：[^\n]*%1[^\n]*\n.{10,}").arg(QRegularExpression::escape(file));
        QVERIFY2(QRegularExpression(form).match(texts[1]).hasMatch(), qPrintable(texts[1]));
        QCOMPARE(filesOf("favorites"), before);
        QCOMPARE(m_fixture->document(source), sourceText);
    }

    void storesAgainOnceThereIsRoom()
    {
        const auto source = makeSource();
        SmallDisk disk(m_fixture->path("favorites"));
        disk.Fill(true);
        ModalMeeting<QMessageBox> meeting(
            [](QMessageBox& box) { QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton); });
        QVERIFY(!add(source, "Stone"));
        disk.RoomAgain();
        QVERIFY(meeting.met && add(source, "Stone"));
    }

    void ignoresWhatIsNone()
    {
        ModalMeeting<QMessageBox> meeting([](QMessageBox& box) { box.reject(); });
        QVERIFY(!add(nullptr, "Stone"));
        m_fixture->manager().SetFavoriteLibraryPath({});
        QVERIFY(!add(makeSource(), "Stone"));
        QVERIFY(!meeting.met);
    }

private:
    QStringList filesOf(const char* folder) const
    {
        QStringList files;
        const auto tree = m_fixture->tree(folder);
        for (auto entry = tree.cbegin(); entry != tree.cend(); ++entry) {
            if (!entry.key().endsWith('/'))
                files += entry.key() + ' ' + QString::number(entry->size());
        }
        return files;
    }
    kiv::CAppearanceInstancePtr add(const kiv::CAppearanceInstancePtr& source, const char* category)
    {
        return CMaterialHelper::AddFavorite(source, category, m_fixture->manager(), &m_fixture->library());
    }
    kiv::CAppearanceInstancePtr makeSource()
    {
        const QByteArray picture = makePicture(Qt::red, "PNG");
        m_fixture->write(Picture, picture);
        m_fixture->write("textures/bump.png", picture);
        const auto source = m_fixture->makeAppearance("source", m_fixture->path(Picture).toStdString(), "bump.png");
        source->SetName(u8"红砖");
        source->SetEditType(1);
        return source;
    }

    std::unique_ptr<LibraryFixture> m_fixture;
};

int main(int argc, char** argv)
{
    SmallDisk::Prepare();
    return runMaterialTest(argc, argv, []() -> QObject& {
        static TestFavoriteCopy test;
        return test;
    });
}
#include "TestFavoriteCopy.moc"
