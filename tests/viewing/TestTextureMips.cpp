#include "TextureMips.h"

#include <MaterialTest.h>

#include <climits>

using Bytes = std::vector<unsigned char>;

/// The smaller copies of a texture that is seen from afar.
class TestTextureMips : public MaterialTest {
    Q_OBJECT

private slots:
    void coloursAreMixedAsLight()
    {
        const Bytes board = {0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 0, 0, 0, 0};
        const auto mixed = [&](bool isColor) { return kiv::MakeMips(2, 2, board.data(), isColor, 64).back().texels; };
        QVERIFY(mixed(true) == Bytes({188, 188, 188, 128}));
        QVERIFY(mixed(false) == Bytes({128, 128, 128, 128}));

        // What is even stays as it is at every size, however dark.
        for (int grey = 0; grey < 256; ++grey) {
            const Bytes even(4 * 4 * 4, static_cast<unsigned char>(grey));
            for (const kiv::CMipLevel& level : kiv::MakeMips(4, 4, even.data(), true, 64))
                QVERIFY2(level.texels == Bytes(level.texels.size(), even[0]), qPrintable(QString::number(grey)));
        }
    }

    void rowsRunFromTheBottom()
    {
        const Bytes column = {1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3};
        QVERIFY(kiv::MakeMips(1, 3, column.data(), false, 64)[0].texels == Bytes({3, 3, 3, 3, 2, 2, 2, 2, 1, 1, 1, 1}));
    }

    void sizes_data()
    {
        const auto row = testColumns<QSize, int, QString>("picture", "maxSide", "expected");
        row("powers of two", {8, 4}, 64, "8x4 4x2 2x1 1x1");
        row("odd", {5, 3}, 64, "5x3 2x1 1x1");
        row("a column", {1, 7}, 64, "1x7 1x3 1x1");
        row("one texel", {1, 1}, 64, "1x1");
        row("as large as may be", {8, 8}, 8, "8x8 4x4 2x2 1x1");
        row("too long", {9, 2}, 8, "4x1 2x1 1x1");
        row("nothing is allowed", {9, 2}, INT_MIN, "1x1");
    }

    void sizes()
    {
        QFETCH(QSize, picture);
        QFETCH(int, maxSide);
        const Bytes texels(std::size_t(picture.width() * picture.height() * 4));
        QStringList sizes;
        for (const kiv::CMipLevel& level :
             kiv::MakeMips(picture.width(), picture.height(), texels.data(), true, maxSide)) {
            sizes += QString("%1x%2").arg(level.width).arg(level.height);
            QCOMPARE(level.texels.size(), std::size_t(level.width * level.height * 4));
        }
        QTEST(sizes.join(' '), "expected");
    }
};

MATERIAL_TEST_MAIN(TestTextureMips)
#include "TestTextureMips.moc"
