#include "LibraryFixture.h"
#include "MaterialTest.h"

#include <kiv/AppearanceSerializer.h>

#include <QJsonDocument>
#include <QJsonObject>

using namespace kiv;

namespace {

QByteArray record(int kind, const char* id, const char* document)
{
    return QJsonDocument(QJsonObject{{"kind", kind}, {"id", id}, {"appearance", document}}).toJson();
}

const QByteArray s_noRecords[] = {QByteArray(),
                                  "{\"kind\":0,\"id\":\"brick\"",
                                  "[0,\"brick\"]",
                                  QByteArray(100000, '['),
                                  R"({"id":"brick"})",
                                  R"({"kind":7,"id":"brick"})",
                                  R"({"kind":"0","id":"brick"})",
                                  R"({"kind":0})",
                                  R"({"kind":1,"id":"brick","key":"name"})",
                                  record(1, "brick", "{"),
                                  record(2, "new", R"({"id":"brick"})"),
                                  record(1, "brick", R"({"id":"brick","template":"Generic","roughness":"x"})")};

}  // namespace

class TestEditRecords : public MaterialTest {
    Q_OBJECT

private slots:
    void init()
    {
        m_fixture = std::make_unique<LibraryFixture>();
        m_library = std::make_shared<CAppearanceLibrary>();
        m_serializer = std::make_unique<CAppearanceSerializer>(m_fixture->manager());
        m_serializer->SetAppearanceLibrary(m_library);
        add("brick");
        add("红木");
        add("glass")->SetName("a \"quoted\" \\ name\n\x01");
    }

    void takesEditsBackInReverseOrder()
    {
        const auto before = documents();
        std::vector<String> stack;
        const auto record = [&](const String& id, int kind, const String& key = {}) {
            stack.push_back(m_serializer->SerializeEditedMaterialData(id, kind, key));
        };
        add("copy");
        record("copy", EditedMaterialAdded);
        record("copy", EditedMaterialChanged, "diffuse_color");
        m_library->FindInstance("copy")->SetDiffuse({0.1F, 0.2F, 0.3F, 0.4F});
        record("红木", EditedMaterialChanged, "diffuse_texture");
        m_library->FindInstance("红木")->GetDiffuseTexture()->SetTextureFile("other.png");
        m_library->FindInstance("红木")->SetProperty("unheard of", MakePropertyValue(String("x")));
        record("glass", EditedMaterialDeleted);
        m_library->DeleteInstance("glass");
        record("红木", EditedMaterialDeleted);
        m_library->DeleteInstance("红木");

        QVERIFY(documents() != before);
        for (auto step = stack.rbegin(); step != stack.rend(); ++step)
            QVERIFY2(m_serializer->DeserializeEditedMaterialData(*step), step->c_str());
        QCOMPARE(documents(), before);
    }

    void keepsTheObjectThatOthersHold()
    {
        const auto held = m_library->FindInstance("brick");
        held->SetCloudFlag(true);
        const String record = m_serializer->SerializeEditedMaterialData("brick", EditedMaterialChanged, "roughness");
        held->SetProperty("roughness", MakePropertyValue(0.125F));
        QCOMPARE(m_serializer->DeserializeEditedMaterialData(record), held);
        QVERIFY(held->ValueOr("roughness", 0.0F) != 0.125F);
        QVERIFY(held->GetCloudFlag());
    }

    void tellsIdsApartThatBeginAlike()
    {
        const auto before = documents();
        const String id{"brick\0Y", 7};
        m_library->AddInstance(m_library->FindInstance("brick")->Clone(id));
        const String record = m_serializer->SerializeEditedMaterialData(id, EditedMaterialAdded, {});
        QVERIFY(m_serializer->DeserializeEditedMaterialData(record));
        QCOMPARE(documents(), before);
    }

    void takesBackNothingTwice()
    {
        const auto before = documents();
        const String deleted = m_serializer->SerializeEditedMaterialData("brick", EditedMaterialDeleted, {});
        QVERIFY(!m_serializer->DeserializeEditedMaterialData(deleted));  // it is still there
        add("copy");
        const String added = m_serializer->SerializeEditedMaterialData("copy", EditedMaterialAdded, {});
        const String changed = m_serializer->SerializeEditedMaterialData("copy", EditedMaterialChanged, "name");
        QVERIFY(m_serializer->DeserializeEditedMaterialData(added));
        QVERIFY(!m_serializer->DeserializeEditedMaterialData(added));
        QVERIFY(!m_serializer->DeserializeEditedMaterialData(changed));
        QCOMPARE(documents(), before);

        for (const int kind : {-1, 3})
            QVERIFY(m_serializer->SerializeEditedMaterialData("brick", kind, {}).empty());
        QVERIFY(m_serializer->SerializeEditedMaterialData("gone", EditedMaterialDeleted, {}).empty());
        m_serializer->SetAppearanceLibrary({});
        QVERIFY(m_serializer->SerializeEditedMaterialData("brick", EditedMaterialDeleted, {}).empty());
        QVERIFY(!m_serializer->DeserializeEditedMaterialData(deleted));
    }

    void ignoresWhatIsNoRecord()
    {
        const auto before = documents();
        for (const QByteArray& text : s_noRecords) {
            QVERIFY2(!m_serializer->DeserializeEditedMaterialData(text.toStdString()), text.constData());
            QCOMPARE(documents(), before);
        }
    }

private:
    QMap<QString, QByteArray> documents()
    {
        QMap<QString, QByteArray> all;
        for (const auto& [id, appearance] : *m_library)
            all.insert(QString::fromStdString(id), m_fixture->document(appearance));
        return all;
    }

    CAppearanceInstancePtr add(const String& id)
    {
        const auto appearance = m_fixture->makeAppearance(id, "textures\\" + id + ".png");
        m_library->AddInstance(appearance);
        return appearance;
    }

    std::unique_ptr<LibraryFixture> m_fixture;
    std::unique_ptr<CAppearanceSerializer> m_serializer;
    CAppearanceLibraryPtr m_library;
};

MATERIAL_TEST_MAIN(TestEditRecords)
#include "TestEditRecords.moc"
