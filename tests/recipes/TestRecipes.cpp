#include "Recipe.h"

#include <MaterialTest.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

namespace {

constexpr int Side = 96;

QString recipeFolder()
{
    return QStringLiteral(MATERIAL_TESTS_DIR "/../data/textures/recipes");
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

/// Mean difference between two neighbouring lines; `line` and `next` are rows, or columns.
double meanStep(const QImage& image, bool rows, int line, int next)
{
    double sum = 0;
    for (int i = 0; i < Side; ++i)
        sum += rows ? difference(image.pixel(i, line), image.pixel(i, next))
                    : difference(image.pixel(line, i), image.pixel(next, i));
    return sum / Side;
}

/// The largest step inside the picture: joints and edges are steps, and so may be the seam, but no larger one.
double largestStep(const QImage& image, bool rows)
{
    double largest = 0;
    for (int line = 0; line + 1 < Side; ++line)
        largest = std::max(largest, meanStep(image, rows, line, line + 1));
    return largest;
}

}  // namespace

class TestRecipes : public MaterialTest {
    Q_OBJECT

private slots:
    void shippedRecipesAreSeamlessAndRepeatable_data()
    {
        QTest::addColumn<QString>("recipe");
        for (const QFileInfo& file : QDir(recipeFolder()).entryInfoList({"*.json"}, QDir::Files))
            QTest::newRow(qPrintable(file.completeBaseName())) << file.filePath();
    }

    void shippedRecipesAreSeamlessAndRepeatable()
    {
        QFETCH(QString, recipe);
        QTemporaryDir first, second;
        QCOMPARE(makeTexture(recipe, first.path(), Side).problem, QString());
        QCOMPARE(makeTexture(recipe, second.path(), Side).problem, QString());
        const QStringList files = QDir(first.path()).entryList(QDir::Files);
        QVERIFY(!files.isEmpty());
        for (const QString& name : files) {
            const QImage image(first.filePath(name));
            QCOMPARE(image.size(), QSize(Side, Side));
            QCOMPARE(image, QImage(second.filePath(name)));
            for (const bool rows : {true, false}) {
                const double seam = meanStep(image, rows, Side - 1, 0);
                QVERIFY2(seam <= largestStep(image, rows) * 1.15 + 2, qPrintable(name));
            }
        }
    }

    void badRecipesAreRefusedWithTheirReason_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no JSON") << QByteArray("{\"family\"") << "no JSON object";
        QTest::newRow("unknown family") << json("{'family':'lace','size':[1,1]}") << "\"family\"";
        QTest::newRow("no size") << json("{'family':'leather'}") << "\"size\"";
        QTest::newRow("foreign key") << json("{'family':'leather','size':[1,1],'colour':1}") << "\"colour\"";
        QTest::newRow("unknown parameter")
            << json("{'family':'leather','size':[1,1],'parameters':{'colour':'#123456'}}") << "\"colour\"";
        QTest::newRow("out of range") << QByteArray(
                                             R"({"family":"leather","size":[1,1],"parameters":{"count":100000}})")
                                      << "\"count\"";
        QTest::newRow("no colour") << QByteArray(
                                          R"({"family":"leather","size":[1,1],"parameters":{"color":"brownish"}})")
                                   << "\"color\"";
        QTest::newRow("unknown bond") << QByteArray(
                                             R"({"family":"masonry","size":[1,1],"parameters":{"bond":"loose"}})")
                                      << "\"bond\"";
    }

    void badRecipesAreRefusedWithTheirReason()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, reason);
        QTemporaryDir folder;
        QFile file(folder.filePath("bad.json"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.close();
        const QString problem = makeTexture(file.fileName(), folder.path(), Side).problem;
        QVERIFY2(problem.startsWith("bad.json: ") && problem.contains(reason), qPrintable(problem));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("bad.json"));
    }
};

MATERIAL_TEST_MAIN(TestRecipes)
#include "TestRecipes.moc"
