#include "IncludeRules.h"

#include <MaterialTest.h>
#include <TestFiles.h>

#include <QTemporaryDir>

namespace {

const QString s_root = QStringLiteral(MATERIAL_SOURCE_DIR);

// A small repository with something to include in every kind of room.
void makeRepository(const QString& root)
{
    for (const char* file : {"platform/model/include/kiv/Appearance.h", "platform/model/Document.h",
                             "platform/viewing/include/kiv/Texture.h", "apps/host/MainWindow.h"})
        writeFile(root + '/' + file, "");
    writeFile(root + "/MaterialUI/LibraryWidget.h", "class MATERIALUI_EXPORT A;");
    writeFile(root + "/MaterialUI/model/Helper.h", "class MATERIALUI_EXPORT B;");
    writeFile(root + "/MaterialUI/browser/Ctrl.h", "class MATERIALUI_EXPORT C;");
    writeFile(root + "/MaterialUI/browser/Thumbnails.h", "class D;");
}

}  // namespace

class TestArchitecture : public MaterialTest {
    Q_OBJECT

private slots:
    void includesFollowTheArrows()
    {
        const CIncludeRules rules(s_root);
        for (const char* folder : {"platform/", "MaterialUI/", "apps/"})
            QVERIFY2(!rules.GetFiles().filter(folder).isEmpty(), folder);
        const QStringList violations = rules.FindViolations();
        QVERIFY2(violations.isEmpty(), qPrintable('\n' + violations.join('\n')));
    }

    void rulesFindWhatBreaksThem_data()
    {
        const auto row = testColumns<QString, QString, QString>("file", "line", "wrong");
        row("product uses the contract", "MaterialUI/browser/New.cpp", "#include <kiv/Appearance.h>", "");
        row("model uses viewing", "platform/model/New.cpp", "#include <kiv/Texture.h>", "");
        row("room uses its own", "MaterialUI/browser/New.cpp", "#include \"Thumbnails.h\"", "");
        row("room uses what lies below", "MaterialUI/editor/New.cpp", "#include \"Helper.h\"", "");
        row("room uses an exported peer", "MaterialUI/editor/New.cpp", "#include \"Ctrl.h\"", "");
        row("root ties the rooms", "MaterialUI/New.cpp", "#include \"browser/Thumbnails.h\"", "");
        row("message box in the model", "MaterialUI/model/New.cpp", "#include <QMessageBox>", "");
        row("viewing uses model", "platform/viewing/New.cpp", "#include <kiv/Appearance.h>", "not below");
        row("platform uses product", "platform/model/New.cpp", "#include \"Helper.h\"", "not below");
        row("platform uses product by path", "platform/model/New.h", " # include \"../../MaterialUI/model/Helper.h\"",
            "not below");
        row("product uses an application", "MaterialUI/New.cpp", "#include \"MainWindow.h\"", "not below");
        row("room uses the root", "MaterialUI/browser/New.cpp", "#include <LibraryWidget.h>", "not below");
        row("model uses a room", "MaterialUI/model/New.cpp", "#include \"Ctrl.h\"", "not below");
        row("private header of a peer", "MaterialUI/editor/New.cpp", "#include \"Thumbnails.h\"", "not exported");
        row("private header of the platform", "MaterialUI/model/New.cpp", "#include \"Document.h\"",
            "private to platform/model");
        row("around the seam", "MaterialUI/model/New.cpp", "#include \"../../platform/model/include/kiv/Appearance.h\"",
            "in quotes");
        row("widget in the model", "MaterialUI/model/New.cpp", "#include <QTreeWidget>", "no widget class");
        row("widget in the platform", "platform/model/New.cpp", "#include <QtWidgets/QWidget>", "no widget class");
        row("unknown room", "platform/attic/New.cpp", "", "no room");
    }

    void rulesFindWhatBreaksThem()
    {
        QFETCH(QString, file);
        QFETCH(QString, line);
        QFETCH(QString, wrong);  // empty: allowed
        QTemporaryDir root;
        makeRepository(root.path());
        writeFile(root.filePath(file), "#pragma once\n" + line.toUtf8() + "\n");
        const QStringList violations = CIncludeRules(root.path()).FindViolations();
        QCOMPARE(violations.size(), wrong.isEmpty() ? 0 : 1);
        QVERIFY2(violations.join("").contains(wrong), qPrintable(violations.join("")));
        QVERIFY2(wrong.isEmpty() || violations[0].startsWith(file + ':'), "names the file");
    }

    void readmeShowsTheExampleThatIsBuilt()
    {
        const QByteArray example = readFile(s_root + "/docs/examples/embed/main.cpp");
        QVERIFY(!example.isEmpty());
        QVERIFY2(readFile(s_root + "/README.md").contains("```cpp\n" + example + "```"),
                 "README.md differs from docs/examples/embed/main.cpp");
    }
};

MATERIAL_TEST_MAIN(TestArchitecture)

#include "TestArchitecture.moc"
