#include "Layout.h"
#include "Noise.h"
#include "Recipe.h"

#include <MaterialTest.h>
#include <TestFiles.h>

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtConcurrent>

#include <algorithm>

namespace {

constexpr int Side = 96;

QString dataFolder()
{
    return QStringLiteral(MATERIAL_TESTS_DIR "/../data/textures");
}

QFileInfoList recipes()
{
    return QDir(dataFolder() + "/recipes").entryInfoList({"*.json"}, QDir::Files);
}

/// JSON with single quotes, which moc reads more surely than raw texts.
QByteArray json(const char* text)
{
    return QByteArray(text).replace('\'', '"');
}

int difference(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
}

/// In how many lines across the seam the step over it is half as large again as any other of the line. Where the
/// picture goes on over the seam as it does elsewhere, that is rare; a joint on the seam is a step, but so are the
/// other joints.
int linesBrokenBySeam(const QImage& image, bool rows)
{
    const auto pixel = [&](int line, int i) { return rows ? image.pixel(i, line) : image.pixel(line, i); };
    int broken = 0;
    for (int line = 0; line < Side; ++line) {
        int largest = 0;
        for (int i = 0; i + 1 < Side; ++i)
            largest = std::max(largest, difference(pixel(line, i), pixel(line, i + 1)));
        broken += difference(pixel(line, Side - 1), pixel(line, 0)) > largest * 3 / 2 + 6;
    }
    return broken;
}

}  // namespace

class TestRecipes : public MaterialTest {
    Q_OBJECT

    QTemporaryDir m_made;
    QHash<QString, QString> m_problems;

protected:
    /// All at once, as the tool does; what one thread makes later must be the same.
    void prepare() override
    {
        const auto make = [this](const QFileInfo& recipe) {
            return makeTexture(recipe.filePath(), m_made.path(), Side).problem;
        };
        const QFileInfoList files = recipes();
        QVERIFY(!files.isEmpty());
        const auto problems =
            QtConcurrent::blockingMapped<QStringList>(files, std::function<QString(const QFileInfo&)>(make));
        for (int i = 0; i < files.size(); ++i)
            m_problems.insert(files[i].filePath(), problems[i]);
    }

private slots:
    void shippedRecipesAreSeamlessAndRepeatable_data()
    {
        const auto row = testColumns<QString>("recipe");
        for (const QFileInfo& file : recipes())
            row(qPrintable(file.completeBaseName()), file.filePath());
    }

    void shippedRecipesAreSeamlessAndRepeatable()
    {
        QFETCH(QString, recipe);
        QCOMPARE(m_problems.value(recipe), QString());
        QTemporaryDir again;
        QCOMPARE(makeTexture(recipe, again.path(), Side).problem, QString());
        const QStringList files = QDir(again.path()).entryList(QDir::Files);
        QVERIFY(!files.isEmpty());
        for (const QString& name : files) {
            QCOMPARE(readFile(again.filePath(name)), readFile(m_made.filePath(name)));
            const QImage image(again.filePath(name));
            QCOMPARE(image.size(), QSize(Side, Side));
            for (const bool rows : {true, false}) {
                const int broken = linesBrokenBySeam(image, rows);
                QVERIFY2(broken <= Side / 8, qPrintable(QStringLiteral("%1: %2").arg(name).arg(broken)));
            }
        }
    }

    /// The library takes its real-world sizes from that list.
    void readMeTellsTheSizes()
    {
        const QString list = QString::fromUtf8(readFile(dataFolder() + "/README.md"));
        for (const QFileInfo& file : recipes()) {
            const QJsonObject recipe = QJsonDocument::fromJson(readFile(file.filePath())).object();
            const QJsonArray size = recipe["size"].toArray();
            const QString line = QStringLiteral("| %1 | %2 x %3 | %4 |")
                                     .arg(file.completeBaseName())
                                     .arg(size[0].toDouble())
                                     .arg(size[1].toDouble())
                                     .arg(recipe.contains("normals") ? "yes" : "");
            QVERIFY2(list.contains(line), qPrintable(line));
        }
    }

    /// What stands out in a picture hides small faults of its ground, so the ground is tried by itself.
    void noiseHasPeriodOne()
    {
        for (int i = 0; i < 500; ++i) {
            const float u = Noise::random(i, 1, 1), v = Noise::random(i, 2, 1);
            for (const auto& [x, y] : {std::pair(u + 1, v), std::pair(u, v + 1), std::pair(u - 1, v - 2)}) {
                QVERIFY(std::abs(Noise::fbm(u, v, 3, 5, 4, 7) - Noise::fbm(x, y, 3, 5, 4, 7)) < 1e-3f);
                QVERIFY(std::abs(Noise::ridged(u, v, 4, 2, 3, 8) - Noise::ridged(x, y, 4, 2, 3, 8)) < 1e-3f);
                const Noise::Cell here = Noise::cells(u, v, 5, 7, 1, 9), there = Noise::cells(x, y, 5, 7, 1, 9);
                QCOMPARE(there.id, here.id);
                QVERIFY(std::abs(there.edge - here.edge) < 1e-3f);
            }
        }
    }

    /// A joint may lie on the seam; where none does, the same block is found on both sides of it.
    void blocksGoOnOverTheSeam()
    {
        for (const char* bond : {"running", "third", "stack", "flemish", "english", "herringbone", "ashlar", "planks",
                                 "hexagon", "checker"}) {
            QVERIFY2(Layout::isKnown(bond), bond);
            const Layout layout{bond, 4, 6, 3};
            constexpr float Near = 0.0005f;
            for (int i = 0; i < 200; ++i) {
                const float t = (float(i) + 0.5f) / 200;
                for (const auto& [a, b] : {std::pair(blockAt(layout, Near, t), blockAt(layout, 1 - Near, t)),
                                           std::pair(blockAt(layout, t, Near), blockAt(layout, t, 1 - Near))})
                    QVERIFY2(a.id == b.id || (a.edge < 0.003f && b.edge < 0.003f), bond);
            }
        }
    }

    void badRecipesAreRefusedWithTheirReason()
    {
        const std::pair<const char*, const char*> cases[] = {
            {"{'family':'lace','size':[1,1]}", "\"family\""},
            {"{'family':'leather'}", "\"size\""},
            {"{'family':'leather','size':[1,'1']}", "\"size\""},
            {"{'family':'leather','size':[1,1],'colour':1}", "\"colour\""},
            {"{'family':'leather','size':[1,1],'normals':'strong'}", "\"normals\""},
            {"{'family':'leather','size':[1,1],'parameters':[1]}", "\"parameters\""},
            {"{'family':'leather','size':[1,1],'parameters':{'colour':'#123456'}}", "\"colour\""},
            {"{'family':'leather','size':[1,1],'parameters':{'count':100000}}", "\"count\""},
            {"{'family':'leather','size':[1,1],'parameters':{'count':20.5}}", "\"count\""},
            {"{'family':'leather','size':[1,1],'parameters':{'color':'brownish'}}", "\"color\""},
            {"{'family':'strokes','size':[1,1],'parameters':{'colors':[]}}", "\"colors\""},
            {"{'family':'strokes','size':[1,1],'parameters':{'taper':1}}", "\"taper\""},
            {"{'family':'stone','size':[1,1],'parameters':{'kind':'cheese'}}", "\"kind\""},
            {"{'family':'masonry','size':[1,1],'parameters':{'bond':'loose'}}", "\"bond\""},
            {"{'family'", "no JSON object"}};
        for (const auto& [recipe, named] : cases) {
            QTemporaryDir folder;
            const QString file = writeFile(folder.filePath("bad.json"), json(recipe));
            const QString problem = makeTexture(file, folder.path(), Side).problem;
            QVERIFY2(problem.startsWith("bad.json: ") && problem.contains(named), qPrintable(problem));
            QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("bad.json"));
        }
    }
};

MATERIAL_TEST_MAIN(TestRecipes)
#include "TestRecipes.moc"
