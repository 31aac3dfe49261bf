#include "MaterialTest.h"
#include "TestFiles.h"

#include <kiv/Image.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include <cmath>
#include <limits>

using kiv::CImage;

namespace {

constexpr double Pi = 3.14159265358979323846;

// Grey values by place.
QImage picture(int width, int height, const std::function<double(int, int)>& grey)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int value = qBound(0, qRound(grey(x, y)), 255);
            image.setPixel(x, y, qRgb(value, value, value));
        }
    }
    return image;
}

struct Direction {
    double right, up, out;  // of length 1, give or take what a byte holds
};

constexpr double Byte = 1.01 / 127.5;

Direction at(const CImage& normals, int x, int y)
{
    const unsigned char* pixel = normals.GetData() + (std::size_t(y) * std::size_t(normals.GetWidth()) + x) * 4;
    return {pixel[0] / 127.5 - 1, pixel[1] / 127.5 - 1, pixel[2] / 127.5 - 1};
}

QByteArray bytes(const CImage& image)
{
    return {reinterpret_cast<const char*>(image.GetData()), image.GetWidth() * image.GetHeight() * 4};
}

}  // namespace

class TestImage : public MaterialTest {
    Q_OBJECT

private slots:
    void survivesAFile_data()
    {
        const auto row = testColumns<QString, QRgb, int>("name", "colour", "tolerance");
        row("png", "a.png", qRgba(10, 200, 30, 77), 0);
        row("bmp, other name", QString::fromUtf8("木 纹.BMP"), qRgba(10, 200, 30, 255), 0);
        row("jpeg", "a.jpeg", qRgba(10, 200, 30, 255), 3);
    }

    void survivesAFile()
    {
        QFETCH(QString, name);
        QFETCH(QRgb, colour);
        QFETCH(int, tolerance);
        const std::vector<int> expected = {qRed(colour), qGreen(colour), qBlue(colour), qAlpha(colour)};
        CImage image(17, 5);
        for (int i = 0; i < 17 * 5 * 4; ++i)
            image.GetData()[i] = static_cast<unsigned char>(expected[std::size_t(i % 4)]);
        QVERIFY(image.SaveToFile(path(name)));
        CImage read;
        QVERIFY(read.LoadFromFile(path(name)));
        QCOMPARE(read.GetWidth(), 17);
        QCOMPARE(read.GetHeight(), 5);
        for (int i = 0; i < 17 * 5 * 4; ++i)
            QVERIFY(std::abs(read.GetData()[i] - image.GetData()[i]) <= tolerance);
    }

    void refusesWhatItCannotWrite()
    {
        QVERIFY(CImage(2, 2).SaveToFile(path("kept.png")));
        const QStringList before = QDir(m_folder.path()).entryList();
        QVERIFY(!CImage().SaveToFile(path("kept.png")));
        QVERIFY(!CImage(2, 2).SaveToFile(path("a.tga")));
        QVERIFY(!CImage(2, 2).SaveToFile(path("no such folder/a.png")));
        QVERIFY(!CImage(2, 2).SaveToFile(L""));
        QCOMPARE(QDir(m_folder.path()).entryList(), before);
        QVERIFY(CImage().LoadFromFile(path("kept.png")));
    }

    void refusesWhatItCannotRead()
    {
        writeFile(m_folder.filePath("broken.png"), "\x89PNG\r\n\x1a\n and no more");
        CImage image(3, 2);
        image.GetData()[0] = 9;
        const QByteArray before = bytes(image);
        for (const char* name : {"broken.png", "missing.png", "."})
            QVERIFY(!image.LoadFromFile(path(name)));
        QCOMPARE(bytes(image), before);
    }

    void sizesOutOfRangeAreEmpty()
    {
        for (const CImage& image : {CImage(0, 5), CImage(5, -1), CImage(INT_MAX, INT_MAX)}) {
            QVERIFY(image.IsEmpty());
            QCOMPARE(image.GetWidth() + image.GetHeight(), 0);
        }
    }

    // Lit from above left, the slope there is the bright one.
    void aBumpIsRaised()
    {
        const auto map = normals(
            picture(64, 64, [](int x, int y) { return 255 * std::exp(-std::hypot(x - 32, y - 32) / 9); }), 8, 2);
        QVERIFY(map);
        const Direction left = at(*map, 24, 32), right = at(*map, 40, 32), above = at(*map, 32, 24),
                        below = at(*map, 32, 40);
        QVERIFY(left.right < -0.2 && right.right > 0.2);
        QVERIFY(above.up > 0.2 && below.up < -0.2);
        QVERIFY(std::abs(left.up) <= Byte && std::abs(above.right) <= Byte);
        const Direction top = at(*map, 32, 32);
        QVERIFY(std::abs(top.right) <= Byte && std::abs(top.up) <= Byte && top.out > 0.99);
        QCOMPARE(int(map->GetData()[3]), 255);
    }

    // 2 grey levels a pixel to the right, white 51 pixels high: 0.4 pixels a pixel. Only red, green and blue count.
    void theSlopeIsTrue()
    {
        QImage ramp = picture(100, 8, [](int x, int) { return 2. * x; }).convertToFormat(QImage::Format_ARGB32);
        for (int x = 0; x < 100; ++x)
            ramp.setPixelColor(x, 3, QColor(2 * x, 2 * x, 2 * x, 7 * x % 256));
        QVERIFY(ramp.save(m_folder.filePath("ramp.png")));
        for (const double blur : {0., 10.}) {
            const auto map = CImage::CreateNormalMapFromFile(path("ramp.png"), 51, blur);
            QVERIFY(map);
            const Direction slope = at(*map, 50, 3);
            QVERIFY(std::abs(slope.right + 0.4 / std::hypot(1, 0.4)) <= Byte);
            QVERIFY(std::abs(slope.up) <= Byte);
            QVERIFY(std::abs(slope.out - 1 / std::hypot(1, 0.4)) <= Byte);
        }
        // At an edge, half as steep as the brightness that it rises to is high.
        const auto steepness = [&](QRgb colour) {
            QImage image(64, 64, QImage::Format_RGB32);
            image.fill(Qt::black);
            for (int y = 0; y < 64; ++y)
                image.setPixel(10, y, colour);
            const Direction edge = at(*normals(image, 2, 0), 9, 30);
            return -edge.right / edge.out;
        };
        QVERIFY(std::abs(steepness(qRgb(255, 255, 255)) - 1) < 0.03);
        QVERIFY(std::abs(steepness(qRgb(0, 255, 0)) - 0.7152) < 0.03);
        QVERIFY(std::abs(steepness(qRgb(255, 0, 0)) - 0.2126) < 0.03);
        QVERIFY(std::abs(steepness(qRgb(0, 0, 255)) - 0.0722) < 0.03);
    }

    // Moved by some of its own pixels, the picture gives the same map moved: no edge is special.
    void aSeamlessPictureStaysSeamless()
    {
        constexpr int width = 300, height = 200, moved = 150, lowered = 77;
        const auto wave = [](int x, int y) {
            return 127 + 60 * std::sin(2 * Pi * (3. * x / width + 2. * y / height)) + (x * 7 + y * y) % 2 * 30;
        };
        const auto straight = normals(picture(width, height, wave), 20, 6);
        const auto shifted = normals(
            picture(width, height, [&](int x, int y) { return wave((x + moved) % width, (y + lowered) % height); }), 20,
            6);
        QVERIFY(straight && shifted);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const Direction a = at(*shifted, x, y), b = at(*straight, (x + moved) % width, (y + lowered) % height);
                QVERIFY(std::abs(a.right - b.right) <= Byte && std::abs(a.up - b.up) <= Byte &&
                        std::abs(a.out - b.out) <= Byte);
            }
        }
    }

    // Against the response of a Gaussian: a wave of length 16 pixels, smoothed by 4, keeps exp(-(2 pi 4 / 16)^2 / 2).
    void smoothingSparesShapeAndTakesGrain()
    {
        const auto steepest = [&](double length, double blur) {
            const auto map = normals(
                picture(1024, 64, [&](int x, int) { return 127.5 + 100 * std::sin(2 * Pi * x / length); }), 60, blur);
            double most = 0;
            for (int x = 0; x < 1024; ++x)
                most = std::max(most, at(*map, x, 20).right / at(*map, x, 20).out);
            return most;
        };
        const double kept = std::exp(-Pi * Pi / 8);
        QVERIFY(std::abs(steepest(16, 4) / steepest(16, 0) / kept - 1) < 0.05);
        QVERIFY(steepest(4, 4) < 0.02);
    }

    void oddSizes_data()
    {
        const auto row = testColumns<QSize, double>("size", "blur");
        row("one pixel", QSize(1, 1), 2.);
        row("one pixel, as smooth as can be", QSize(1, 1), 1e300);
        row("a column, as smooth as can be", QSize(1, 700), 1e300);
        row("two by two, not smoothed", QSize(2, 2), 0.);
        row("a wide strip", QSize(16384, 16), 2.);
        row("a high strip", QSize(16, 16384), 2.);
    }

    void oddSizes()
    {
        QFETCH(QSize, size);
        QFETCH(double, blur);
        const QImage even = picture(size.width(), size.height(), [](int, int) { return 90; });
        const auto map = normals(even, 1e300, blur);
        QVERIFY(map);
        QCOMPARE(QSize(map->GetWidth(), map->GetHeight()), size);
        for (int i = 0; i < map->GetWidth() * map->GetHeight(); i += 5)
            QVERIFY(map->GetData()[4 * i] == 128 && map->GetData()[4 * i + 2] == 255);
    }

    void refusesBrokenInput()
    {
        QVERIFY(picture(4, 4, [](int, int) { return 0; }).save(m_folder.filePath("good.png")));
        const double infinite = std::numeric_limits<double>::infinity();
        for (const double wrong : {-1., infinite, infinite - infinite}) {
            QVERIFY(!CImage::CreateNormalMapFromFile(path("good.png"), wrong, 2));
            QVERIFY(!CImage::CreateNormalMapFromFile(path("good.png"), 8, wrong));
        }
        QVERIFY(CImage::CreateNormalMapFromFile(path("good.png"), 8, 2));
        QVERIFY(!CImage::CreateNormalMapFromFile(path("missing.png"), 8, 2));

        // More pixels than are decoded, in a file of a few kilobytes.
        QImage large(16384, 16384, QImage::Format_Mono);
        large.fill(0);
        QVERIFY(large.save(m_folder.filePath("large.png")));
        QVERIFY(!CImage::CreateNormalMapFromFile(path("large.png"), 8, 2));
    }

private:
    std::wstring path(const QString& name) const { return m_folder.filePath(name).toStdWString(); }
    kiv::CImagePtr normals(const QImage& heights, double scale, double blur)
    {
        return heights.save(m_folder.filePath("heights.bmp"))
                   ? CImage::CreateNormalMapFromFile(path("heights.bmp"), scale, blur)
                   : nullptr;
    }

    QTemporaryDir m_folder;
};

MATERIAL_TEST_MAIN(TestImage)
#include "TestImage.moc"
