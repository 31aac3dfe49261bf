#include "LibraryGenerator.h"
#include "MaterialTest.h"

#include <glenox/StdStringTrans.h>
#include <kiv/AppearanceLibraryParser.h>
#include <kiv/MaterialLibrary.h>

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace {

QJsonObject texts(const QString& language, const QString& kind)
{
    QFile file(QString(MATERIAL_DATA_DIR "/texts/%1.json").arg(language));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()[kind].toObject()
                                          : QJsonObject();
}

/// Of the texts, those that a person of some language would be shown untranslated.
QStringList untranslated(const QSet<QString>& stored, const QString& kind)
{
    QStringList missing;
    for (const QString language : {"zh", "en"}) {
        const QJsonObject known = texts(language, kind);
        for (const QString& text : stored) {
            if (known[text].toString().isEmpty())
                missing << language + ": " + text;
        }
    }
    return missing;
}

QString firstSegment(const kiv::CAppearanceInstance& appearance)
{
    return QString::fromStdString(appearance.GetCategory()).section('/', 0, 0);
}

}  // namespace

/// Whether what is shipped is sound: all of it loads, is complete, is shown in both languages, and belongs together.
class TestData : public MaterialTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        kiv::CMaterialLibraryPaths paths;
        paths.library = QString(MATERIAL_DATA_DIR).toStdWString();
        paths.textures = paths.library + L"/textures";
        m_opened = m_library.Open(paths);
    }

private slots:
    void everythingIsAccepted()
    {
        for (const kiv::CParseError& error : m_library.GetReport())
            qInfo("%s", error.Text().c_str());
        QVERIFY(m_library.GetReport().empty());
        QVERIFY(m_opened);
        for (const QString& name : templateNames())
            QVERIFY2(m_library.GetMaterialManager()->FindTemplate(name.toStdString()), qPrintable(name));
    }

    void everyTypeIsPopulatedAndTogether()
    {
        QStringList types;  // a new entry wherever the type changes, so a type that is scattered occurs twice
        for (const auto& [id, appearance] : library()) {
            const QString type = firstSegment(*appearance);
            QCOMPARE(QString::fromStdString(appearance->GetTemplateName()), type);
            if (types.isEmpty() || types.last() != type)
                types << type;
        }
        QStringList expected = templateNames();
        expected.removeAll("Texture");
        expected.removeAll("SimpleTexture");
        types.sort();
        expected.sort();
        QCOMPARE(expected.size(), 20);
        QCOMPARE(types, expected);
        QVERIFY(library().count() >= 150);
    }

    void everyNameIsTranslated()
    {
        QSet<QString> stored{"System Library", "Favorite Library", "Customer Library",
                             "All Material",   "Ceiling",          "Other"};
        QSet<QString> names;
        for (const auto& [id, appearance] : library()) {
            names << QString::fromStdString(appearance->GetName());
            for (const QString& segment : QString::fromStdString(appearance->GetCategory()).split('/'))
                stored << segment;
            QVERIFY2(!appearance->GetTags().empty(), appearance->GetName().c_str());
        }
        QCOMPARE(std::size_t(names.size()), library().count());
        QCOMPARE(untranslated(stored + names, "appearance"), QStringList());
    }

    void everyPanelEditsWhatItsTemplateDeclares()
    {
        QSet<QString> shown;
        for (const QString& name : templateNames()) {
            const kiv::CAppearanceTemplatePtr type = m_library.GetMaterialManager()->FindTemplate(name.toStdString());
            QVERIFY2(type, qPrintable(name));
            checkElements(*type, type->GetUi(), shown);
        }
        shown.remove("");
        QVERIFY(!shown.isEmpty());
        QCOMPARE(untranslated(shown, "ui"), QStringList());
    }

    void everyTextureIsThereAtItsSize()
    {
        for (const auto& [id, appearance] : library()) {
            checkTexture(appearance->GetDiffuseTexture(), appearance->GetUseDiffuseTexture());
            checkTexture(appearance->GetBumpTexture(), appearance->GetUseBumpTexture());
            if (QTest::currentTestFailed())
                QFAIL(appearance->GetName().c_str());
        }
    }

    void aGeneratedLibraryIsAcceptedWhole()
    {
        const GeneratorOptions options{500};
        const std::string text = GenerateLibrary(options);
        QVERIFY(qAbs(double(text.size()) / options.count / options.bytes - 1) < 0.1);
        QCOMPARE(GenerateLibrary(options), text);

        kiv::CAppearanceLibraryParser parser(*m_library.GetMaterialManager());
        const auto generated = std::make_shared<kiv::CAppearanceLibrary>();
        QVERIFY(parser.AppearanceLibraryFromString(generated, text, "generated"));
        QVERIFY2(parser.GetReport().empty(), parser.GetReport().empty() ? "" : parser.GetReport()[0].Text().c_str());
        QCOMPARE(generated->count(), std::size_t(options.count));

        QSet<QString> types;
        for (const auto& [id, appearance] : *generated)
            types << firstSegment(*appearance);
        QCOMPARE(types.size(), 20);
    }

private:
    const kiv::CAppearanceLibrary& library() { return *m_library.GetMaterialManager()->GetSystemLibrary(); }
    QStringList templateNames() const
    {
        return QDir(MATERIAL_DATA_DIR "/templates").entryList({"*.json"}, QDir::Files).replaceInStrings(".json", "");
    }

    void checkElements(const kiv::CAppearanceTemplate& type, const std::vector<kiv::CAppearanceUIElement>& elements,
                       QSet<QString>& shown)
    {
        for (const kiv::CAppearanceUIElement& element : elements) {
            for (const char* attribute : {"label", "tooltip", "unit"})
                shown << QString::fromStdString(element.GetAttribute(attribute));
            const kiv::String id = element.GetAttribute("id");
            if (element.HasAttribute("parameter")) {
                QCOMPARE(id, element.GetAttribute("parameter"));  // edits go to the id
                QVERIFY2(type.FindParameter(id), (type.GetName() + ": " + id).c_str());
            }
            checkElements(type, element.GetStackPanels(), shown);
        }
    }

    void checkTexture(const kiv::CAppearanceInstancePtr& texture, bool used)
    {
        QVERIFY(texture);
        const kiv::String file = texture->GetTextureFile();
        if (file.empty())
            QVERIFY(!used);
        else
            QVERIFY2(QFileInfo(QString(MATERIAL_DATA_DIR "/textures/") + file.c_str()).isFile(), file.c_str());

        const auto size = texture->ValueOr("scale", kiv::CVec2<float>());
        const auto matrix = texture->ValueOr("transform", kiv::CMatrix3<float>());
        QVERIFY2(size.x > 0 && size.y > 0, file.c_str());
        QVERIFY2(qAbs(matrix(0, 0) * size.x - 1) < 1e-5f && qAbs(matrix(1, 1) * size.y - 1) < 1e-5f, file.c_str());
    }

    kiv::CMaterialLibrary m_library;
    bool m_opened = false;
};

MATERIAL_TEST_MAIN(TestData)
#include "TestData.moc"
