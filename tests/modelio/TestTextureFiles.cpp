#include "MaterialTest.h"
#include "TestFiles.h"

#include <kiv/TextureManager.h>
#include <kiv/system/StoredPath.h>

#include <QBuffer>
#include <QImage>
#include <QTemporaryDir>
#include <QtEndian>

#include <sys/stat.h>

using namespace kiv;

namespace {

QImage stripes()
{
    QImage image(5, 3, QImage::Format_ARGB32);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            image.setPixelColor(x, y, QColor(x * 50, y * 100, 7, y == 2 ? 128 : 255));
    return image;
}

QByteArray encoded(const QImage& image, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format, 100);
    return bytes;
}

quint32 crc32(const QByteArray& bytes)
{
    quint32 crc = 0xffffffffU;
    for (const char c : bytes) {
        crc ^= uchar(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xedb88320U : 0);
    }
    return ~crc;
}

/// A sound PNG whose header, checksum included, claims another size.
QByteArray claiming(QByteArray png, quint32 width, quint32 height)
{
    qToBigEndian(width, png.data() + 16);
    qToBigEndian(height, png.data() + 20);
    qToBigEndian(crc32(png.mid(12, 17)), png.data() + 29);
    return png;
}

QImage decoded(const QString& path)
{
    QImage image;
    CTextureManager::TextureHelper(path.toStdWString(), [&](int width, int height, const unsigned char* rgba) {
        image = QImage(rgba, width, height, width * 4, QImage::Format_RGBA8888).copy();
    });
    return image;
}

}  // namespace

class TestTextureFiles : public MaterialTest {
    Q_OBJECT

private slots:
    void decodesPicturesByContent()
    {
        const QImage expected = stripes().convertToFormat(QImage::Format_RGBA8888);
        QCOMPARE(decoded(write("named.jpg", encoded(stripes(), "PNG"))), expected);
        const QImage opaque = stripes().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(decoded(write("木纹", encoded(opaque, "BMP"))), opaque.convertToFormat(QImage::Format_RGBA8888));
        QCOMPARE(decoded(write("photo.png", encoded(opaque, "JPG"))).size(), QSize(5, 3));
        // The largest that is promised to pass, and a little more.
        const QImage wide(16384, 16, QImage::Format_Mono);
        QCOMPARE(decoded(write("wide.png", encoded(wide, "PNG"))).size(), wide.size());
    }

    void refusesWhatIsNoPicture_data()
    {
        const QByteArray png = encoded(QImage(200, 200, QImage::Format_RGB32), "PNG");
        QImage noise(200, 200, QImage::Format_RGB32);
        for (int i = 0; i < 200 * 200; ++i)
            noise.setPixel(i % 200, i / 200, qRgb(i * 7, i * 13, i * 29));
        const QByteArray jpeg = encoded(noise, "JPG");
        const QString pipe = m_folder.filePath("pipe.png");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);

        const auto row = testColumns<QString>("path");
        row("empty path", QString());
        row("null character", write("a.png", png) + QChar(QChar::Null) + ".png");
        row("missing", m_folder.filePath("missing.png"));
        row("folder", m_folder.path());
        row("device", "/dev/zero");
        row("pipe", pipe);
        row("empty file", write("empty.png", {}));
        row("web page", write("page.png", "<!DOCTYPE html><html><body>404</body></html>"));
        row("drawing", write("drawing.png", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"));
        row("huge", write("huge.png", claiming(png, 30000, 30000)));
        row("just too large", write("large.png", claiming(png, 8192, 8193)));
        row("truncated PNG", write("half.png", encoded(noise, "PNG").left(9000)));
        row("PNG header only", write("header.png", png.left(33)));
        row("truncated JPEG", write("half.jpg", jpeg.left(jpeg.size() / 2)));
        row("truncated BMP", write("half.bmp", encoded(noise, "BMP").left(9000)));
    }

    void refusesWhatIsNoPicture()
    {
        expectWarning("libpng|[Jj]peg|qbmp|bmp");
        QFETCH(QString, path);
        bool called = false;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!CTextureManager::TextureHelper(path.toStdWString(),
                                                [&](int, int, const unsigned char*) { called = true; }));
        QVERIFY(!called);
        QVERIFY2(timer.elapsed() < 1000, "refused only after decoding");
    }

    void survivesItsCallback()
    {
        const std::wstring path = write("fine.png", encoded(stripes(), "PNG")).toStdWString();
        QVERIFY(!CTextureManager::TextureHelper(path, {}));
        QVERIFY(!CTextureManager::TextureHelper(path, [](int, int, const unsigned char*) { throw std::bad_alloc(); }));
    }

    void turnsStoredPathsIntoThoseOfTheMachine_data()
    {
        const auto row =
            testColumns<QString, QString, QString, bool, bool>("base", "tail", "joined", "absolute", "climbs");
        row("both separators", "/data\\", "\\\\UserLib Textures\\a//b", "/data/UserLib Textures/a/b", true, false);
        row("no base", "", "a\\b", "a/b", false, false);
        row("no base, absolute", "", "\\a", "/a", true, false);
        row("no tail", "/data//", "", "/data/", false, false);
        row("root", "/", "a", "/a", false, false);
        row("drive", "C:\\data", "d:x", "C:/data/d:x", true, false);
        row("climbs", "/data", "a\\../b", "/data/a/../b", false, true);
        row("dots in a name", "/data", "a..b/...c", "/data/a..b/...c", false, false);
        row("wide", "/材质", "砖\\红", "/材质/砖/红", false, false);
    }

    void turnsStoredPathsIntoThoseOfTheMachine()
    {
        QFETCH(QString, base);
        QFETCH(QString, tail);
        const std::wstring stored = tail.toStdWString();
        QTEST(system::JoinPath(base.toStdWString(), stored), "joined");
        QTEST(system::IsAbsolutePath(stored), "absolute");
        QTEST(system::ClimbsOut(stored), "climbs");
    }

    void readsRegularFilesOnly()
    {
        const QString path = write("ten", "0123456789");
        QByteArray bytes = "kept";
        QString reason;
        for (const QString& bad : {m_folder.path(), QString("/dev/zero"), QString("/nowhere"), QString()}) {
            QVERIFY(!system::ReadWholeFile(bad, 100, bytes, reason));
            QVERIFY(!reason.isEmpty());
        }
        QVERIFY(!system::ReadWholeFile(path, 9, bytes, reason));
        QCOMPARE(bytes, QByteArray("kept"));
        QVERIFY(system::ReadWholeFile(path, 10, bytes, reason));
        QCOMPARE(bytes, QByteArray("0123456789"));
        QCOMPARE(system::FileSize(path), 10LL);
    }

    void writesWholeFilesOrNone()
    {
        QString reason;
        const QString path = m_folder.filePath("new/folders/file");
        QVERIFY2(system::WriteWholeFile(path, "first", reason), qPrintable(reason));
        QVERIFY2(system::CopyWholeFile(write("source", "second"), path, 6, reason), qPrintable(reason));
        QVERIFY(!system::CopyWholeFile(m_folder.filePath("source"), path, 5, reason));
        QVERIFY(!system::CopyWholeFile("/dev/zero", path, 5, reason));
        QVERIFY(!system::WriteWholeFile(path + "/below a file", "third", reason));
        QVERIFY(!system::WriteWholeFile(m_folder.filePath("new"), "third", reason));
        QVERIFY(!reason.isEmpty());
        QByteArray bytes;
        QVERIFY(system::ReadWholeFile(path, 100, bytes, reason));
        QCOMPARE(bytes, QByteArray("second"));
        QCOMPARE(QDir(m_folder.filePath("new/folders")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
    }

private:
    QString write(const QString& name, const QByteArray& bytes) const
    {
        return writeFile(m_folder.filePath(name), bytes);
    }

    QTemporaryDir m_folder;
};

MATERIAL_TEST_MAIN(TestTextureFiles)
#include "TestTextureFiles.moc"
