#include <LibraryFixture.h>
#include <MaterialHelper.h>
#include <MaterialTest.h>

#include <QImage>

using kiv::CMaterialHelper;

/// The helpers on names, digests and pictures.
class TestMaterialHelper : public MaterialTest {
    Q_OBJECT

private slots:
    void separatesNames()
    {
        const std::tuple<const char*, const char*, int> cases[] = {{"Brick_3", "Brick", 3},
                                                                   {"Brick", "Brick", 0},
                                                                   {"Brick_", "Brick_", 0},
                                                                   {"_3", "_3", 0},
                                                                   {"Brick_-2", "Brick", -2},
                                                                   {"A_B_7", "A_B", 7},
                                                                   {"A_7B", "A_7B", 0},
                                                                   {"A_0x10", "A_0x10", 0},
                                                                   {"", "", 0},
                                                                   {"A_99999999999", "A_99999999999", 0}};
        for (const auto& [name, base, number] : cases) {
            std::pair<QString, int> actual("left over", 77);
            CMaterialHelper::SeparateName(name, actual.first, actual.second);
            QVERIFY2(actual == std::pair(QString(base), number), name);
        }
    }

    void findsNamesThatDoNotRepeat_data()
    {
        const auto row = testColumns<QStringList, QString, QString>("used", "wanted", "result");
        row("empty library", {}, "Brick_4", "Brick");
        row("free base", {"Stone"}, "Brick", "Brick");
        row("next free", {"Brick", "Brick_1"}, "Brick", "Brick_2");
        row("gap", {"Brick", "Brick_2"}, "Brick", "Brick_1");
        row("free number collapses", {"Brick", "Brick_1"}, "Brick_5", "Brick");
        row("base is free", {"Brick_5"}, "Brick_5", "Brick");
        row("ignores case", {"BRICK"}, "brick", "brick_1");
        row("percent signs", {"50%2"}, "50%2", "50%2_1");
        row("Chinese", {u8"红砖"}, u8"红砖", u8"红砖_1");
    }

    void findsNamesThatDoNotRepeat()
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

    void hashes()
    {
        QCOMPARE(CMaterialHelper::HashBytes("abc", 3), std::string("a9993e364706816aba3e25717850c26c9cd0d89d"));
        QCOMPARE(CMaterialHelper::HashBytes(nullptr, 0), std::string("da39a3ee5e6b4b0d3255bfef95601890afd80709"));
        const std::string million(1000000, 'a');
        QCOMPARE(CMaterialHelper::HashBytes(million.data(), million.size()),
                 std::string("34aa973cd4c4daa4f61eeb2bdbad27316534016f"));
    }

    void tellsPicturesByContent_data()
    {
        const auto row = testColumns<QByteArray, QString>("bytes", "type");
        row("png called jpg", makePicture(Qt::red, "PNG"), "PNG");
        row("jpg", makePicture(Qt::red, "JPG"), "JPG");
        row("bmp", makePicture(Qt::red, "BMP"), "BMP");
        row("two bytes", "\xFF\xD8", "JPG");
        row("one byte", "B", "");
        row("empty", {}, "");
        row("web page", "<html>", "");
        row("nearly png", "\x89PNx", "");
    }

    void tellsPicturesByContent()
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

    void snapsSizes()
    {
        const std::pair<int, int> cases[] = {{512, 512}, {513, 512}, {4000, 512}, {511, 256}, {300, 256},
                                             {200, 128}, {128, 128}, {5, 4},      {4, 4},     {3, 128},
                                             {1, 128},   {-1, 4},    {-500, 4}};
        for (const auto& [size, result] : cases)
            QVERIFY2(CMaterialHelper::GetPictureScaledSize(size) == result, qPrintable(QString::number(size)));
    }

    void scalesPictures()
    {
        expectWarning("JPEG datastream contains no image");
        LibraryFixture fixture;
        QImage picture(70, 33, QImage::Format_RGB32);
        picture.fill(Qt::darkGreen);
        const QString path = fixture.path("wrong suffix.txt");
        for (const char* format : {"PNG", "JPG", "BMP"}) {
            QVERIFY(picture.save(path, format));
            const QString scaled = CMaterialHelper::ScaledPicture(path);
            QCOMPARE(QImage(scaled).size(), QSize(64, 32));
            QCOMPARE(CMaterialHelper::GetPictureRealType(scaled), QString(format));
            QVERIFY(QFile::remove(scaled));
            fixture.write("broken.png", fixture.read("wrong suffix.txt").left(20));
            QCOMPARE(CMaterialHelper::ScaledPicture(fixture.path("broken.png")), QString());
        }
        QCOMPARE(CMaterialHelper::ScaledPicture(fixture.path("missing.png")), QString());
    }

    void makesTextureIcons()
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
        QCOMPARE(CMaterialHelper::GetTextureIcon(fixture.path("square.png")).toImage().pixelColor(5, 5),
                 QColor(Qt::blue));

        fixture.write("page.png", "<html>");
        QVERIFY(CMaterialHelper::GetTextureIcon(fixture.path("page.png")).isNull());
        QVERIFY(CMaterialHelper::GetTextureIcon(fixture.path("missing.png")).isNull());
        QVERIFY(CMaterialHelper::GetTextureIcon({}).isNull());
    }

    void checksResources()
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
};

MATERIAL_TEST_MAIN(TestMaterialHelper)
#include "TestMaterialHelper.moc"
