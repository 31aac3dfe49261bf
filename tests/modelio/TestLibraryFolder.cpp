#include "LibraryFixture.h"
#include "MaterialTest.h"

#include <kiv/AppearanceTextureHelper.h>

#include <QCryptographicHash>
#include <QDir>

using namespace kiv;

class TestLibraryFolder : public MaterialTest {
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<LibraryFixture>(); }
    void loadsWhatIsSoundAndReportsTheRest()
    {
        m_fixture->write("library/System Library/a.json", libraryFile({"brick", "wood"}));
        m_fixture->write("library/System Library/b.json", libraryFile({"lost"}).chopped(2));
        m_fixture->write("library/System Library/c.json", libraryFile({"brick", "glass"}));
        QDir().mkpath(m_fixture->path("library/System Library/folder.json"));
        QFile::link("/dev/zero", m_fixture->path("library/System Library/zero.json"));
        m_fixture->write("library/System Library/notes.txt", "no library");
        m_fixture->write("library/templates/Bad.json", "{");
        m_fixture->write("library/texts/bad.json", "[");
        m_fixture->write("library/texts/zh.json", R"({"language":"zh","appearance":{"Brick":"砖"},"ui":{}})");

        CMaterialLibrary library;
        QVERIFY(library.Open(m_fixture->paths()));
        QCOMPARE(reported(library), (QStringList{"bad.json", "Bad.json", "b.json", "c.json", "zero.json"}));
        for (const CParseError& error : library.GetReport())
            QVERIFY2(!error.reason.empty(), error.place.c_str());
        QCOMPARE(library.GetTextureUnit(), String("mm"));
        QCOMPARE(library.GetMaterialManager()->LocalizeAppearanceString("Brick"), String("砖"));
        QStringList ids;
        for (const auto& [id, appearance] : *library.GetMaterialManager()->GetSystemLibrary()) {
            ids.append(QString::fromStdString(id));
            QCOMPARE(appearance->GetEditType(), 0);
        }
        QCOMPARE(ids, (QStringList{"brick", "glass", "wood"}));
    }

    void reportsAFolderThatCannotBeRead()
    {
        QDir().rmdir(m_fixture->path("library/System Library"));
        m_fixture->write("library/System Library", "a file in its place");
        QDir().rmdir(m_fixture->path("library/texts"));
        CMaterialLibrary library;
        QVERIFY(!library.Open(m_fixture->paths()));
        QCOMPARE(reported(library), (QStringList{"texts", "System Library"}));
        QVERIFY(library.GetMaterialManager()->FindTemplate("Generic"));

        CMaterialLibrary nothing;
        QVERIFY(!nothing.Open({m_fixture->widePath("nowhere"), {}, {}}));
        QVERIFY(!nothing.CreateMaterialInstance("Brick"));
    }

    void createsAppearances()
    {
        const auto wood = m_fixture->library().CreateMaterial("Wood", L"橡木");
        QVERIFY(wood);
        QCOMPARE(wood->GetName(), String("橡木"));
        QCOMPARE(wood->GetTemplateName(), String("Wood"));
        QCOMPARE(wood->GetCategory(), String("Wood"));
        QCOMPARE(wood->GetEditType(), 1);
        QCOMPARE(wood->GetId().size(), std::size_t(32));
        QVERIFY(!m_fixture->library().CreateMaterial("Ceiling", L"x"));
        const auto ceiling = m_fixture->library().CreateMaterialInstance("Ceiling");
        QCOMPARE(ceiling->GetTemplateName(), String("Generic"));
        QCOMPARE(ceiling->GetCategory(), String("Ceiling"));
        QVERIFY(ceiling->GetId() != wood->GetId());
    }

    void copiesMaterials_data()
    {
        const auto row = testColumns<QString, bool>("name", "isId");
        row("bare", "0123456789abcdef0123456789ABCDEF", true);
        row("hyphens", "01234567-89ab-cdef-0123-456789abcdef", true);
        row("braces", "{01234567-89ab-cdef-0123-456789abcdef}", true);
        row("half a brace", "{0123456789abcdef0123456789abcdef", false);
        row("31 digits", "0123456789abcdef0123456789abcde", false);
        row("no digit", "0123456789abcdef0123456789abcdeg", false);
        row("line end", "0123456789abcdef0123456789abcdef\n", false);
        row("name", "红砖_2", false);
        row("empty", "", false);
    }

    void copiesMaterials()
    {
        QFETCH(QString, name);
        QFETCH(bool, isId);
        CMaterialLibrary& library = m_fixture->library();
        m_fixture->manager().DeleteUserAppearanceLibrary("Customer Library");
        const auto original = m_fixture->makeAppearance("original", "brick.png");
        original->SetCloudFlag(true);
        const auto copy = library.CopyMaterial(original, name.toStdWString());
        QVERIFY(copy);
        const auto customer = m_fixture->manager().FindUserAppearanceLibrary("Customer Library");
        QVERIFY(customer && customer->FindInstance(copy->GetId()) == copy);
        QCOMPARE(QString::fromStdString(copy->GetId()) == name, isId);
        QCOMPARE(QString::fromStdString(copy->GetName()), isId ? QString("original") : name);
        QCOMPARE(copy->GetEditType(), 1);
        QVERIFY(!copy->GetCloudFlag());
        copy->GetDiffuseTexture()->SetTextureFile("other.png");
        QCOMPARE(original->GetDiffuseTexture()->GetTextureFile(), String("brick.png"));

        QCOMPARE(library.CopyMaterial(original, name.toStdWString()) == nullptr, isId);
        QVERIFY(!library.CopyMaterial({}, name.toStdWString()));
    }

    void copiesTextureFiles()
    {
        const QByteArray picture = makePicture(Qt::blue, "PNG");
        m_fixture->write("textures/a.png", picture);
        m_fixture->write("textures/other.png", "other");
        const CAppearanceTextureHelper helper(m_fixture->manager());
        const String hash = QCryptographicHash::hash(picture, QCryptographicHash::Sha1).toHex().toStdString();
        QCOMPARE(helper.ParserTextureFileToSha(L"a.png"), hash);
        QCOMPARE(helper.ParserTextureFileToSha(m_fixture->widePath("textures\\a.png")), hash);

        const std::wstring folder = m_fixture->widePath("favorites") + L"\\new\\deep";
        QVERIFY(helper.CopyTextureToPath(L"a.png", folder, false));
        QVERIFY(helper.CopyTextureToPathAndRename(L"a.png", folder, L"renamed", false));
        QVERIFY(helper.CopyTextureToPathAndRename(L"other.png", folder, L"renamed", false));
        QCOMPARE(m_fixture->read("favorites/new/deep/renamed"), picture);
        QVERIFY(helper.CopyTextureToPathAndRename(L"other.png", folder, L"renamed", true));
        const QMap<QString, QByteArray> expected{
            {"new/", {}}, {"new/deep/", {}}, {"new/deep/a.png", picture}, {"new/deep/renamed", "other"}};
        QCOMPARE(m_fixture->tree("favorites"), expected);

        for (const std::wstring& source : {std::wstring(L"/dev/zero"), m_fixture->widePath("textures"), std::wstring(),
                                           std::wstring(L"missing.png")}) {
            QVERIFY(!helper.CopyTextureToPathAndRename(source, folder, L"renamed", true));
            QVERIFY(helper.ParserTextureFileToSha(source).empty());
        }
        for (const wchar_t* name : {L"", L".", L"..", L"../up", L"a\\b", L"c:d"})
            QVERIFY(!helper.CopyTextureToPathAndRename(L"a.png", folder, name, true));
        QCOMPARE(m_fixture->tree("favorites"), expected);
    }

private:
    QByteArray libraryFile(const QList<String>& ids)
    {
        QByteArrayList documents;
        for (const String& id : ids) {
            const auto appearance = m_fixture->makeAppearance(id);
            appearance->SetEditType(1);
            documents.append(m_fixture->document(appearance));
        }
        return "{\"appearances\":[" + documents.join(',') + "]}";
    }

    /// The file names that the library's report begins with, in order.
    static QStringList reported(const CMaterialLibrary& library)
    {
        QStringList files;
        for (const CParseError& error : library.GetReport())
            files.append(QString::fromStdString(error.place).section('/', 0, 0));
        return files;
    }

    std::unique_ptr<LibraryFixture> m_fixture;
};

MATERIAL_TEST_MAIN(TestLibraryFolder)
#include "TestLibraryFolder.moc"
