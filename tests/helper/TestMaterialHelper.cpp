#include <LibraryFixture.h>
#include <MaterialHelper.h>
#include <MaterialTest.h>

#include <QImage>

using kiv::CMaterialHelper;

/// The helpers on names, digests and pictures.
class TestMaterialHelper : public MaterialTest {
    Q_OBJECT

private slots:
    void separatesNames_data();
    void separatesNames();
    void findsNamesThatDoNotRepeat_data();
    void findsNamesThatDoNotRepeat();
    void hashes();
    void tellsPicturesByContent_data();
    void tellsPicturesByContent();
    void snapsSizes_data();
    void snapsSizes();
    void scalesPictures_data();
    void scalesPictures();
    void makesTextureIcons();
    void checksResources();
};

void TestMaterialHelper::separatesNames_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<int>("number");
    const auto add = [](const char* name, const char* base, int number) { QTest::newRow(name) << base << number; };
    add("Brick_3", "Brick", 3);
    add("Brick", "Brick", 0);
    add("Brick_", "Brick_", 0);
    add("_3", "_3", 0);
    add("Brick_-2", "Brick", -2);
    add("A_B_7", "A_B", 7);
    add("A_7B", "A_7B", 0);
    add("A_0x10", "A_0x10", 0);
    add("A_99999999999", "A_99999999999", 0);
    add("", "", 0);
}

void TestMaterialHelper::separatesNames()
{
    QFETCH(QString, base);
    QString actual = "left over";
    int number = 77;
    CMaterialHelper::SeparateName(QTest::currentDataTag(), actual, number);
    QCOMPARE(actual, base);
    QTEST(number, "number");
}

void TestMaterialHelper::findsNamesThatDoNotRepeat_data()
{
    QTest::addColumn<QStringList>("used");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("result");
    QTest::newRow("empty library") << QStringList() << "Brick_4"
                                   << "Brick";
    QTest::newRow("free base") << QStringList{"Stone"} << "Brick"
                               << "Brick";
    QTest::newRow("next free") << QStringList{"Brick", "Brick_1"} << "Brick"
                               << "Brick_2";
    QTest::newRow("gap") << QStringList{"Brick", "Brick_2"} << "Brick"
                         << "Brick_1";
    QTest::newRow("free number collapses") << QStringList{"Brick", "Brick_1"} << "Brick_5"
                                           << "Brick";
    QTest::newRow("base is free") << QStringList{"Brick_5"} << "Brick_5"
                                  << "Brick";
    QTest::newRow("ignores case") << QStringList{"BRICK"} << "brick"
                                  << "brick_1";
    QTest::newRow("percent signs") << QStringList{"50%2"} << "50%2"
                                   << "50%2_1";
    QTest::newRow("Chinese") << QStringList{u8"红砖"} << u8"红砖" << u8"红砖_1";
}

void TestMaterialHelper::findsNamesThatDoNotRepeat()
{
    QFETCH(QStringList, used);
    QFETCH(QString, wanted);
    LibraryFixture fixture;
    for (const QString& name : used)
        QVERIFY(fixture.library().CopyMaterial(fixture.makeAppearance("source"), name.toStdWString()));
    const auto system = fixture.makeAppearance("elsewhere");
    system->SetName(wanted.toStdString());
    QVERIFY(fixture.manager().GetSystemLibrary()->AddInstance(system));
    QTEST(CMaterialHelper::GenerateNoRepeatName(fixture.manager(), wanted), "result");
}

void TestMaterialHelper::hashes()
{
    QCOMPARE(CMaterialHelper::HashBytes("abc", 3), std::string("a9993e364706816aba3e25717850c26c9cd0d89d"));
    QCOMPARE(CMaterialHelper::HashBytes(nullptr, 0), std::string("da39a3ee5e6b4b0d3255bfef95601890afd80709"));
    const std::string million(1000000, 'a');
    QCOMPARE(CMaterialHelper::HashBytes(million.data(), million.size()),
             std::string("34aa973cd4c4daa4f61eeb2bdbad27316534016f"));
}

void TestMaterialHelper::tellsPicturesByContent_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("type");
    QTest::newRow("png called jpg") << makePicture(Qt::red, "PNG") << "PNG";
    QTest::newRow("jpg") << makePicture(Qt::red, "JPG") << "JPG";
    QTest::newRow("bmp") << makePicture(Qt::red, "BMP") << "BMP";
    QTest::newRow("two bytes") << QByteArray("\xFF\xD8") << "JPG";
    QTest::newRow("one byte") << QByteArray("B") << "";
    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("web page") << QByteArray("<html>") << "";
    QTest::newRow("nearly png") << QByteArray("\x89PNx") << "";
}

void TestMaterialHelper::tellsPicturesByContent()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, type);
    LibraryFixture fixture;
    fixture.write("file.jpg", bytes);
    const QString path = fixture.path("file.jpg");
    QCOMPARE(CMaterialHelper::GetPictureRealType(path), type);
    QCOMPARE(CMaterialHelper::GetPictureRealType(QString(path).replace('/', '\\')), type);
    QCOMPARE(CMaterialHelper::CheckTextureFileValidity(path), !type.isEmpty());
    for (const QString& none : {QString(), fixture.path("missing"), fixture.path(""), QString("/dev/zero")})
        QVERIFY(!CMaterialHelper::CheckTextureFileValidity(none));
}

void TestMaterialHelper::snapsSizes_data()
{
    QTest::addColumn<int>("result");
    const int cases[][2] = {{512, 512}, {513, 512}, {4000, 512}, {511, 256}, {300, 256}, {200, 128}, {128, 128},
                            {5, 4},     {4, 4},     {3, 128},    {1, 128},   {-1, 4},    {-500, 4}};
    for (const auto& [size, result] : cases)
        QTest::newRow(qPrintable(QString::number(size))) << result;
}

void TestMaterialHelper::snapsSizes()
{
    QTEST(CMaterialHelper::GetPictureScaledSize(QByteArray(QTest::currentDataTag()).toInt()), "result");
}

void TestMaterialHelper::scalesPictures_data()
{
    QTest::addColumn<QByteArray>("format");
    for (const char* format : {"PNG", "JPG", "BMP"})
        QTest::newRow(format) << QByteArray(format);
}

void TestMaterialHelper::scalesPictures()
{
    QFETCH(QByteArray, format);
    LibraryFixture fixture;
    QImage picture(70, 33, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    const QString path = fixture.path("wrong suffix.txt");
    QVERIFY(picture.save(path, format));

    const QString scaled = CMaterialHelper::ScaledPicture(path);
    QVERIFY(QFile::exists(scaled));
    QCOMPARE(QImage(scaled).size(), QSize(64, 32));
    QCOMPARE(CMaterialHelper::GetPictureRealType(scaled), QString(format));
    QVERIFY(QFile::remove(scaled));

    expectWarning("JPEG datastream contains no image");
    fixture.write("broken.png", fixture.read("wrong suffix.txt").left(20));
    QCOMPARE(CMaterialHelper::ScaledPicture(fixture.path("broken.png")), QString());
    QCOMPARE(CMaterialHelper::ScaledPicture(fixture.path("missing.png")), QString());
}

void TestMaterialHelper::makesTextureIcons()
{
    LibraryFixture fixture;
    QImage wide(512, 256, QImage::Format_RGB32);
    wide.fill(Qt::blue);
    QVERIFY(wide.save(fixture.path("wide.png")));
    const QPixmap icon = CMaterialHelper::GetTextureIcon(fixture.path("wide.png"));
    QCOMPARE(icon.size(), QSize(128, 64));
    QCOMPARE(icon.toImage().pixelColor(64, 32), QColor(Qt::blue));

    // What is as large as an icon must not refer to pixels that the decoder has freed.
    QVERIFY(wide.scaled(128, 128).save(fixture.path("square.png")));
    QCOMPARE(CMaterialHelper::GetTextureIcon(fixture.path("square.png")).toImage().pixelColor(5, 5), QColor(Qt::blue));

    fixture.write("page.png", "<html>");
    QVERIFY(CMaterialHelper::GetTextureIcon(fixture.path("page.png")).isNull());
    QVERIFY(CMaterialHelper::GetTextureIcon(fixture.path("missing.png")).isNull());
    QVERIFY(CMaterialHelper::GetTextureIcon({}).isNull());
}

void TestMaterialHelper::checksResources()
{
    LibraryFixture fixture;
    fixture.write("textures/there.png", makePicture(Qt::red, "PNG"));
    fixture.write("elsewhere.png", makePicture(Qt::red, "PNG"));
    const auto isComplete = [&](const char* diffuse, const QString& bump, bool cloud = true) {
        const auto appearance = fixture.makeAppearance("x", diffuse, bump.toStdString());
        appearance->SetCloudFlag(cloud);
        return CMaterialHelper::CheckResourceComplete(appearance, fixture.manager());
    };
    QVERIFY(isComplete("", {}));
    QVERIFY(isComplete("there.png", fixture.path("elsewhere.png")));
    QVERIFY(!isComplete("there.png", "missing.png"));
    QVERIFY(!isComplete("missing.png", "there.png"));
    QVERIFY(isComplete("missing.png", "missing.png", false));
}

MATERIAL_TEST_MAIN(TestMaterialHelper)
#include "TestMaterialHelper.moc"
