#include "LibraryFixture.h"
#include "MaterialTest.h"
#include "ZipBuilder.h"

#include <QCryptographicHash>
#include <QtEndian>

using namespace kiv;

namespace {

const QByteArray s_brick = makePicture(Qt::red, "PNG");
const QByteArray s_bumps = makePicture(Qt::gray, "JPG");

QString hashOf(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
}

String userTexture(const QByteArray& bytes)
{
    return "UserLib Textures\\" + hashOf(bytes).toStdString();
}

/// Every place of a size that the archive claims says another one.
QByteArray claimingSize(QByteArray archive, int size, quint32 claimed)
{
    char real[4], other[4];
    qToLittleEndian(quint32(size), real);
    qToLittleEndian(claimed, other);
    return archive.replace(QByteArray(real, 4), QByteArray(other, 4));
}

/// One bit of the member's packed bytes is another.
QByteArray damaged(QByteArray archive, const QByteArray& member)
{
    const int at = archive.indexOf(member) + member.size() + 40;
    archive[at] = char(archive[at] ^ 4);
    return archive;
}

QVector<ZipMember> manyMembers(int count)
{
    QVector<ZipMember> members;
    for (int i = 0; i < count; ++i)
        members.append({"textures/" + QByteArray::number(i), "x"});
    return members;
}

}  // namespace

class TestAppearanceArchive : public MaterialTest {
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<LibraryFixture>(); }
    void bringsAnAppearanceWithItsTexturesAcross()
    {
        const auto original = makeBrick();
        const QByteArray before = m_fixture->document(original);
        CAppearanceParser parser(m_fixture->manager());
        QVERIFY2(parser.AppearanceToZipFile(original, m_fixture->widePath("new folder/out.ggm")),
                 parser.GetLastError().Text().c_str());
        QCOMPARE(m_fixture->document(original), before);

        LibraryFixture elsewhere;
        CAppearanceParser reader(elsewhere.manager());
        const auto received = reader.AppearanceFromZipFile(m_fixture->widePath("new folder/out.ggm"));
        QVERIFY2(received, reader.GetLastError().Text().c_str());
        QCOMPARE(received->GetDiffuseTexture()->GetTextureFile(), userTexture(s_brick));
        QCOMPARE(received->GetBumpTexture()->GetTextureFile(), userTexture(s_bumps));
        const QMap<QString, QByteArray> expected{{"UserLib Textures/", {}},
                                                 {"UserLib Textures/" + hashOf(s_brick), s_brick},
                                                 {"UserLib Textures/" + hashOf(s_bumps), s_bumps}};
        QCOMPARE(elsewhere.tree("favorites"), expected);
        received->GetDiffuseTexture()->SetTextureFile(original->GetDiffuseTexture()->GetTextureFile());
        received->GetBumpTexture()->SetTextureFile(original->GetBumpTexture()->GetTextureFile());
        QVERIFY(AreEqual(*received, *original));
    }

    void makesTheSameBytesAgain()
    {
        const auto appearance = makeBrick();
        CAppearanceParser parser(m_fixture->manager());
        QVERIFY(parser.AppearanceToZipFile(appearance, m_fixture->widePath("a.ggm")));
        LibraryFixture elsewhere;
        elsewhere.write("textures/brick.png", s_brick);
        elsewhere.write("textures/other name", s_bumps);
        appearance->GetBumpTexture()->SetTextureFile("other name");
        QVERIFY(CAppearanceParser(elsewhere.manager()).AppearanceToZipFile(appearance, m_fixture->widePath("b.ggm")));
        QCOMPARE(m_fixture->read("b.ggm"), m_fixture->read("a.ggm"));
    }

    void keepsWhatIsThere()
    {
        // A texture that is missing, one that is no picture, and one of which the user has the file.
        m_fixture->write("textures/page.png", "<html>");
        CAppearanceParser parser(m_fixture->manager());
        const auto lost = m_fixture->makeAppearance("lost", "gone\\lost.png", "page.png");
        QVERIFY(parser.AppearanceToZipFile(lost, m_fixture->widePath("lost.ggm")));
        const auto found = parser.AppearanceFromZipFile(m_fixture->widePath("lost.ggm"));
        QVERIFY(found && AreEqual(*found, *lost));
        QVERIFY(m_fixture->tree("favorites").isEmpty());

        m_fixture->write("favorites/UserLib Textures/" + hashOf(s_brick), "the user's");
        const auto before = m_fixture->tree("favorites");
        QVERIFY(read(makeZip({{"appearance.json", brickDocument()}, {"textures/a.png", s_brick}})));
        QCOMPARE(m_fixture->tree("favorites"), before);
    }

    void unpacksOnlyWhatTheDocumentNames()
    {
        const auto appearance = read(makeZip({{"textures/", {}},
                                              {"textures/b.png", s_bumps},
                                              {"textures/unnamed.png", s_brick},
                                              {"readme.txt", "hello"},
                                              {"appearance.json", brickDocument()}}));
        QVERIFY2(appearance, m_error.Text().c_str());
        QCOMPARE(appearance->GetDiffuseTexture()->GetTextureFile(), String("textures\\a.png"));
        QCOMPARE(appearance->GetBumpTexture()->GetTextureFile(), userTexture(s_bumps));
        QCOMPARE(m_fixture->tree("favorites").keys(),
                 (QStringList{"UserLib Textures/", "UserLib Textures/" + hashOf(s_bumps)}));
    }

    void needsAFavoriteLibraryForTextures()
    {
        m_fixture->manager().SetFavoriteLibraryPath({});
        QVERIFY(!read(makeZip({{"appearance.json", brickDocument()}, {"textures/a.png", s_brick}})));
        QVERIFY(!m_error.empty());
        QVERIFY2(read(makeZip({{"appearance.json", brickDocument()}})), m_error.Text().c_str());
        QVERIFY(m_error.empty());

        // Textures that cannot be stored, since the place of their folder is taken; the first of them must go again.
        m_fixture->manager().SetFavoriteLibraryPath(m_fixture->widePath("favorites"));
        QDir().mkpath(m_fixture->path("favorites/UserLib Textures/" + hashOf(s_bumps)));
        const auto before = m_fixture->tree("favorites");
        QVERIFY(!read(
            makeZip({{"appearance.json", brickDocument()}, {"textures/a.png", s_brick}, {"textures/b.png", s_bumps}})));
        QCOMPARE(m_fixture->tree("favorites"), before);
    }

    void leavesTheOldArchiveWhenWritingFails()
    {
        CAppearanceParser parser(m_fixture->manager());
        m_fixture->write("file", "old");
        QVERIFY(!parser.AppearanceToZipFile(makeBrick(), m_fixture->widePath("file/below.ggm")));
        QVERIFY(!parser.GetLastError().empty());
        QVERIFY(!parser.AppearanceToZipFile({}, m_fixture->widePath("file")));
        QCOMPARE(m_fixture->read("file"), QByteArray("old"));
    }

    void refusesHostileArchives_data()
    {
        const ZipMember document{"appearance.json", brickDocument()};
        const ZipMember good{"textures/a.png", s_brick};
        const auto with = [&](const ZipMember& member) { return makeZip({document, good, member}); };
        const QByteArray zeros(17 * 1024 * 1024, '\0');
        const QByteArray large(257 * 1024 * 1024, '\0');
        const QByteArray bomb = makeZip({document, good, {"textures/b.png", large}});
        const auto row = testColumns<QByteArray, QByteArray>("archive", "said");
        row("climbing member", with({"../evil.png", s_brick}), "../evil.png");
        row("climbing below", with({"textures/../../evil", s_brick}), "textures/../../evil");
        row("absolute member", with({"/tmp/evil.png", s_brick}), "/tmp/evil.png");
        row("drive", with({"c:evil.png", s_brick}), "c:evil.png");
        row("backslash", with({"textures\\evil.png", s_brick}), "textures\\evil.png");
        row("encrypted texture", with({"textures/b.png", s_bumps, true}), "encrypted");
        row("encrypted document", makeZip({{document.name, document.bytes, true}}), "appearance.json");
        row("no document", makeZip({good}), "appearance.json");
        row("two documents",
            makeZip({document, {"appearance.jsoX", "{}"}}).replace("appearance.jsoX", "appearance.json"), "twice");
        row("document refused", makeZip({{document.name, "{\"template\":"}, good}), "appearance.json");
        row("document too large", makeZip({{document.name, zeros}, good}), "appearance.json");
        row("texture is a web page", with({"textures/b.png", "<html></html>"}), "textures/b.png");
        row("texture is empty", with({"textures/b.png", {}}), "textures/b.png");
        row("bomb", bomb, "textures/b.png");
        row("bomb that claims little", claimingSize(bomb, large.size(), 100), "textures/b.png");
        row("1,000 members", makeZip(QVector<ZipMember>{document, good} + manyMembers(998)), "members");
        row("damaged texture", damaged(with({"textures/b.png", s_bumps}), "textures/b.png"), "textures/b.png");
    }

    void refusesHostileArchives()
    {
        QFETCH(QByteArray, archive);
        QFETCH(QByteArray, said);  // what the reason must name
        QVERIFY(!read(archive));
        QVERIFY2(QByteArray(m_error.Text().c_str()).contains(said), m_error.Text().c_str());
        QVERIFY(QByteArray(m_error.place.c_str()).startsWith("in.ggm"));
        QVERIFY(m_fixture->tree("favorites").isEmpty());
    }

    void refusesTruncatedArchives()
    {
        const QByteArray whole =
            makeZip({{"appearance.json", brickDocument()}, {"textures/a.png", s_brick}, {"textures/b.png", s_bumps}});
        for (int length = 0; length < whole.size(); length += 1 + whole.size() / 60) {
            QVERIFY2(!read(whole.left(length)), qPrintable(QString::number(length)));
            QVERIFY(!m_error.empty());
        }
        QVERIFY(!read(whole.left(whole.size() - 1)));
        QVERIFY(m_fixture->tree("favorites").isEmpty());
        QVERIFY2(read(whole), m_error.Text().c_str());
    }

private:
    CAppearanceInstancePtr makeBrick()
    {
        m_fixture->write("textures/brick.png", s_brick);
        m_fixture->write("textures/bumps.jpg", s_bumps);
        return m_fixture->makeAppearance("砖墙", "brick.png", m_fixture->path("textures/bumps.jpg").toStdString());
    }

    /// A document that names "textures/a.png" and, without the folder, "b.png".
    QByteArray brickDocument()
    {
        return m_fixture->document(m_fixture->makeAppearance("brick", "textures\\a.png", "b.png"));
    }

    /// Reads the bytes as an archive; the reason of a refusal is kept.
    CAppearanceInstancePtr read(const QByteArray& archive)
    {
        m_fixture->write("in.ggm", archive);
        CAppearanceParser parser(m_fixture->manager());
        const auto appearance = parser.AppearanceFromZipFile(m_fixture->widePath("in.ggm"));
        m_error = parser.GetLastError();
        return appearance;
    }

    std::unique_ptr<LibraryFixture> m_fixture;
    CParseError m_error;
};

MATERIAL_TEST_MAIN(TestAppearanceArchive)
#include "TestAppearanceArchive.moc"
