#include "HostFixture.h"

#include <MaterialTest.h>
#include <ProjectDocument.h>
#include <TestFiles.h>

#include <MaterialConstants.h>

#include <QJsonArray>
#include <QJsonDocument>

using kiv::CAppearanceInstancePtr;

using Spoil = std::function<QByteArray(QJsonObject)>;
Q_DECLARE_METATYPE(Spoil)

namespace {

using State = QMap<QString, QByteArray>;

State stateOf(HostFixture& fixture, const ProjectDocument& document)
{
    State state;
    for (const BuildingElement& element : document.building().elements)
        if (element.takesMaterial())
            state[element.id] = fixture.document(document.materialOf(element.id));
    for (const auto& entry : *fixture.manager().FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME))
        state["library/" + QString::fromStdString(entry.first)] = fixture.document(entry.second);
    state["building"] = QJsonDocument(document.building().source).toJson();
    return state;
}

}  // namespace

/// A project comes back from its file as it was, or not at all.
class TestProjectDocument : public MaterialTest {
    Q_OBJECT

private slots:
    void startsWithProjectCopies()
    {
        HostFixture fixture;
        ProjectDocument document(fixture.library(), "en");
        QVERIFY2(document.startNew(fixture.options().sampleProject()), qPrintable(document.reason()));
        QVERIFY(document.path().isEmpty());
        QVERIFY(!document.isModified());
        for (const BuildingElement& element : document.building().elements) {
            if (!element.takesMaterial())
                continue;
            const CAppearanceInstancePtr material = document.materialOf(element.id);
            const auto start = fixture.manager().GetSystemLibrary()->FindInstance(element.startMaterial.toStdString());
            QVERIFY2(start, qPrintable(element.id + " names a material that is not shipped"));
            QCOMPARE(material->GetName(), start->GetName());
            QCOMPARE(material->GetEditType(), 1);
            QVERIFY(document.isInProjectLibrary(material));
        }
    }

    void comesBackAsItWas()
    {
        HostFixture fixture;
        ProjectDocument document(fixture.library(), "zh");
        QVERIFY(document.startNew(fixture.options().sampleProject()));
        const CAppearanceInstancePtr system = fixture.systemMaterial("Ashlar masonry");
        const CAppearanceInstancePtr stranger = system->Clone("of another machine");
        // A float without fraction under a key that no template knows is what a careless way through JSON turns around.
        stranger->SetProperty("added by somebody", kiv::MakePropertyValue(2.0F));
        document.assign("ground-wall", system);
        document.assign("plinth", stranger);
        document.materialOf("roof")->SetProperty("roughness", kiv::MakePropertyValue(0.1F));
        const State saved = stateOf(fixture, document);
        QVERIFY2(document.save(fixture.path("a.json")), qPrintable(document.reason()));
        QVERIFY(!document.isModified());

        HostFixture other;
        ProjectDocument reopened(other.library(), "zh");
        QVERIFY2(reopened.open(fixture.path("a.json")), qPrintable(reopened.reason()));
        QCOMPARE(stateOf(other, reopened), saved);
        QCOMPARE(reopened.materialOf("ground-wall"), other.systemMaterial("Ashlar masonry"));
        QVERIFY(!reopened.isModified());
        QVERIFY(reopened.save(fixture.path("b.json")));
        QCOMPARE(readFile(fixture.path("b.json")), readFile(fixture.path("a.json")));
    }

    void refuses_data()
    {
        const auto row = testColumns<Spoil, QString>("spoil", "reason");
        const auto with = [](const QString& key, const QJsonValue& value) {
            return [=](QJsonObject project) {
                project[key] = value;
                return QJsonDocument(project).toJson();
            };
        };
        const auto element = [](const QString& key, const QJsonValue& value) {
            return [=](QJsonObject project) {
                QJsonObject building = project["building"].toObject();
                QJsonArray elements = building["elements"].toArray();
                QJsonObject first = elements[0].toObject();
                first[key] = value;
                elements[0] = first;
                building["elements"] = elements;
                project["building"] = building;
                return QJsonDocument(project).toJson();
            };
        };
        const auto bytes = [](const QByteArray& text) { return [=](const QJsonObject&) { return text; }; };
        const auto material = [&](const char* source, const QJsonValue& document) {
            return with("materials", QJsonArray{QJsonObject{{"source", source}, {"document", document}}});
        };
        row("empty", bytes({}), "JSON");
        row(
            "truncated", [](const QJsonObject& p) { return QJsonDocument(p).toJson().left(5000); }, "JSON");
        row("nested 100,000 deep", bytes(QByteArray(100000, '[')), "JSON");
        row("something else", bytes(R"({"appearances":[]})"), "not a project");
        row("newer", with("version", 2), "newer version (format 2)");
        row("no version", with("version", QJsonValue()), "version");
        row("no building", with("building", QJsonValue()), "building");
        row("unknown source", material("cloud", "{}"), "materials/0");
        row("document is no text", material("project", QJsonObject()), "materials/0");
        row("document is refused", material("project", R"({"template":"Wood","id":"a","roughness":"rough"})"),
            "roughness");
        row("material without id", material("project", R"({"template":"Wood"})"), "materials/0");
        row("unknown element", with("assignments", QJsonObject{{"moat", 0}}), "assignments/moat");
        row("unknown material", with("assignments", QJsonObject{{"roof", 9999}}), "assignments/roof");
        row("negative material", with("assignments", QJsonObject{{"roof", -1}}), "assignments/roof");
        row("id twice", element("id", "roof"), "\"roof\" occurs twice");
        row("no shapes", element("shapes", QJsonArray()), "elements/0");
        row("solid inside out", element("solids", QJsonArray{QJsonObject{{"front", 1}, {"back", 2}}}),
            "in front of its back");
        row("solid without end", element("solids", QJsonArray{QJsonObject{{"front", 1}, {"back", -1e9}}}), "4 numbers");
        row("two points", element("shapes", QJsonArray{QJsonObject{{"polygon", QJsonArray{QJsonArray{0, 0}}}}}),
            "points");
        row("too large", element("shapes", QJsonArray{QJsonObject{{"rect", QJsonArray{0, 0, 1e300, 1}}}}), "4 numbers");
        row("a billion repeats",
            element("shapes",
                    QJsonArray{QJsonObject{{"rect", QJsonArray{0, 0, 1, 1}}, {"repeat", QJsonArray{1000, 1, 1}}}}),
            "repeats");
        const QJsonArray dots{QJsonObject{{"ellipse", QJsonArray{0, 0, 1, 1}}, {"repeat", QJsonArray{500, 0.1, 0}}},
                              QJsonObject{{"ellipse", QJsonArray{0, 9, 1, 1}}, {"repeat", QJsonArray{500, 0.1, 0}}}};
        QJsonArray many;
        for (int i = 0; i < 10; ++i)
            many.append(dots[i % 2]);
        row("repeats of many shapes", element("shapes", many), "too many points");
    }

    void refuses()
    {
        QFETCH(Spoil, spoil);
        QFETCH(QString, reason);
        HostFixture fixture;
        ProjectDocument document(fixture.library(), "en");
        QVERIFY(document.startNew(fixture.options().sampleProject()));
        QVERIFY(document.save(fixture.path("good.json")));
        document.assign("roof", fixture.systemMaterial("Slate roofing"));
        const State before = stateOf(fixture, document);

        const QJsonObject good = QJsonDocument::fromJson(readFile(fixture.path("good.json"))).object();
        writeFile(fixture.path("bad.json"), spoil(good));
        QVERIFY(!document.open(fixture.path("bad.json")));
        QVERIFY2(document.reason().contains(reason), qPrintable(document.reason()));
        QCOMPARE(stateOf(fixture, document), before);
        QCOMPARE(document.path(), fixture.path("good.json"));
        QCOMPARE(document.undoStack().count(), 1);
        QVERIFY(!document.open(fixture.path("")));
        QVERIFY(!document.save(fixture.path("good.json/not a folder.json")));
        QVERIFY(document.isModified());
    }

    void assignmentsAreUndone()
    {
        HostFixture fixture;
        ProjectDocument document(fixture.library(), "en");
        QVERIFY(document.startNew(fixture.options().sampleProject()));
        QStringList told;
        connect(&document, &ProjectDocument::materialChanged, [&](const QString& id) { told.append(id); });
        const CAppearanceInstancePtr first = document.materialOf("roof");
        const CAppearanceInstancePtr slate = fixture.systemMaterial("Slate roofing");
        document.assign("roof", slate);
        document.assign("roof", slate);
        document.assign("door", slate);
        QCOMPARE(document.undoStack().count(), 2);
        document.undoStack().undo();
        document.undoStack().undo();
        QCOMPARE(document.materialOf("roof"), first);
        QVERIFY(!document.isModified());
        document.undoStack().redo();
        QCOMPARE(document.materialOf("roof"), slate);
        QVERIFY(document.isModified());
        QCOMPARE(told, (QStringList{"roof", "door", "door", "roof", "roof"}));
    }

    void libraryChangesWantSaving()
    {
        HostFixture fixture;
        ProjectDocument document(fixture.library(), "en");
        QVERIFY(document.startNew(fixture.options().sampleProject()));
        document.noticeLibraryChanges();
        QVERIFY(!document.isModified());
        const auto copy = fixture.library().CopyMaterial(fixture.systemMaterial("Slate roofing"), L"mine");
        document.noticeLibraryChanges();
        QVERIFY(document.isModified());
        fixture.manager().FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME)->DeleteInstance(copy->GetId());
        document.noticeLibraryChanges();
        QVERIFY(!document.isModified());
    }
};

MATERIAL_TEST_MAIN(TestProjectDocument)
#include "TestProjectDocument.moc"
