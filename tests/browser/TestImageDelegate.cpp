// What picture cells look like, pixel by pixel, and that no file of whatever kind holds them up.
#include "BrowserFixture.h"
#include "MaterialTest.h"
#include "TestFiles.h"

#include <ImageDelegate.h>

#include <QHeaderView>
#include <QPainter>
#include <QStyleFactory>
#include <QTextStream>

#include <sys/stat.h>

namespace {

QImage noise(int width, int height, quint32 seed)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            seed = seed * 1664525U + 1013904223U;
            image.setPixel(x, y, seed | 0xff000000U);
        }
    }
    return image;
}

class Cell {
public:
    explicit Cell(CAppearanceLibraryBrowserCtrl& browser, int row = 0)
        : m_table(browser.GetTableWidget()), m_item(m_table->item(row, 0))
    {
    }

    QRect rect() const { return m_table->visualItemRect(m_item); }
    QImage grab() const { return m_table->viewport()->grab(rect()).toImage().convertToFormat(QImage::Format_RGB32); }

    /// The cell as it is described, drawn at once with the plain means.
    template <typename Draw>
    QImage expected(const Draw& draw) const
    {
        QImage image(rect().size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        const QBrush background = m_item->background();
        if (background.style() != Qt::NoBrush)
            painter.fillRect(image.rect(), background);
        draw(painter, image.rect());
        return image;
    }

private:
    QTableWidget* m_table;
    QTableWidgetItem* m_item;
};

void drawTexture(QPainter& painter, const QRect& cell, const QString& file)
{
    const QPixmap scaled = QPixmap(file).scaled(cell.size() * 3, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    QApplication::style()->drawItemPixmap(&painter, cell, Qt::AlignHCenter | Qt::AlignVCenter, scaled);
}

const auto drawNothing = [](QPainter&, const QRect&) {};

}  // namespace

class TestImageDelegate : public MaterialTest {
    Q_OBJECT

private slots:
    void textureShowsItsMiddleNinth()
    {
        for (const auto& [picture, width] : {std::pair(QSize(512, 512), 64), {QSize(301, 77), 63}, {QSize(2, 3), 41}}) {
            const QString file = path(QString("noise%1.png").arg(width));
            noise(picture.width(), picture.height(), 7).save(file);
            const auto browser = browserWith(file);
            browser->GetTableWidget()->setColumnWidth(0, width);
            const Cell cell(*browser);
            QCOMPARE(browser->GetTableWidget()->item(0, 0)->data(255).toString(), file);
            QTRY_COMPARE(cell.grab(), cell.expected([&, shown = file](QPainter& painter, const QRect& rect) {
                drawTexture(painter, rect, shown);
            }));
        }
    }

    void colourFillsTheCell()
    {
        const auto browser = browserWith("");
        m_library->FindInstance("1000")->SetDiffuse({1, 0.5F, 0, 0.25F});
        const Cell cell(*browser);
        QCOMPARE(cell.grab(), cell.expected(drawNothing));
        QCOMPARE(browser->GetTableWidget()->item(0, 0)->background().color(), QColor(255, 127, 0, 63));
    }

    void cloudMarkLiesInTheCorner()
    {
        const auto browser = browserWith("");
        m_library->FindInstance("1000")->SetCloudFlag(true);
        QVERIFY(browser->ModifyTableWidgetItemCloud(m_library->FindInstance("1000")));
        const Cell cell(*browser);
        const QPixmap cloud(":/Resources/Cloud.png");
        QCOMPARE(cloud.size(), QSize(16, 16));
        QCOMPARE(cell.grab(), cell.expected([&](QPainter& painter, const QRect& rect) {
            painter.drawPixmap(rect.right() - 15, rect.bottom() - 15, cloud);
        }));
    }

    void pictureIsDrawnAsItIs()
    {
        const QString small = path("small.png");
        const QString large = path("large.png");
        noise(20, 11, 3).save(small);
        noise(201, 150, 4).save(large);
        const auto browser = browserWith(large);
        const Cell cell(*browser);
        for (const QString& file : {small, large}) {
            browser->GetTableWidget()->item(0, 0)->setData(511, file);
            const QPixmap picture(file);
            QTRY_COMPARE(cell.grab(), cell.expected([&](QPainter& painter, const QRect& rect) {
                painter.drawPixmap(rect.width() / 2 - picture.width() / 2, rect.height() / 2 - picture.height() / 2,
                                   picture);
            }));
        }
    }

    void hostileFileIsAnEmptyPicture_data()
    {
        const auto row = testColumns<QString>("file");
        row("absent", path("absent.png"));
        row("folder", m_fixture.files.path(""));
        row("device", "/dev/zero");
        const QString pipe = path("pipe.png");
        mkfifo(qPrintable(pipe), 0600);
        row("pipe", pipe);
        row("page", writeFile(path("page.png"), "<html><body>Not found</body></html>"));
        // The header of a picture of 30,000 x 30,000 pixels, which would take 3.6 GB.
        const char* const header = "89504e470d0a1a0a0000000d49484452000075300000753008060000006627f8ba";
        row("bomb", writeFile(path("bomb.png"), QByteArray::fromHex(header)));
    }

    void hostileFileIsAnEmptyPicture()
    {
        QFETCH(QString, file);
        const auto browser = browserWith(file);
        const Cell cell(*browser);
        QTRY_COMPARE(cell.grab(), cell.expected(drawNothing));
        // Known to be no picture now: the cell is empty at once, not waiting again.
        QCOMPARE(cell.grab(), cell.expected(drawNothing));
    }

    void changedFileIsReadAgain()
    {
        const QString file = path("changing.png");
        noise(64, 64, 1).save(file);
        const auto browser = browserWith(file);
        const Cell cell(*browser);
        const auto draw = [&](QPainter& painter, const QRect& rect) { drawTexture(painter, rect, file); };
        QTRY_COMPARE(cell.grab(), cell.expected(draw));
        noise(80, 64, 2).save(file);
        QVERIFY(browser->SetTableWidgetIcon(m_library->FindInstance("1000")));
        QTRY_COMPARE(cell.grab(), cell.expected(draw));
        QFile::remove(file);
        QVERIFY(browser->SetTableWidgetIcon(m_library->FindInstance("1000")));
        QTRY_COMPARE(cell.grab(), cell.expected(drawNothing));
    }

    void destroyedTableIsNotTold()
    {
        const QString file = path("slow%1.png");
        for (int i = 0; i < 6; ++i)
            noise(700, 700, quint32(i)).save(file.arg(1000 + i));
        auto browser = browserWith(file, 6);
        browser->GetTableWidget()->viewport()->grab();
        browser.reset();
        // The thumbnails that were asked for arrive or are dropped; another browser's still come.
        browser = browserWith(file, 6);
        const Cell cell(*browser);
        QTRY_COMPARE(cell.grab(), cell.expected([&](QPainter& painter, const QRect& rect) {
            drawTexture(painter, rect, file.arg(1000));
        }));
    }

    void scrolledAwayIsDropped()
    {
        const QString file = path("many%1.png");
        for (int i = 0; i < 300; ++i)
            noise(8, 8, quint32(i)).save(file.arg(1000 + i));
        ImageDelegate delegate;
        const auto browser = browserWith(file, 300);
        QTableWidget* table = browser->GetTableWidget();
        table->setItemDelegateForColumn(0, &delegate);
        for (int row = 0; row < 300; row += 3) {
            table->scrollToItem(table->item(row, 0), QAbstractItemView::PositionAtTop);
            table->viewport()->grab();
        }
        table->scrollToBottom();
        const Cell last(*browser, 299);
        QTRY_COMPARE(last.grab(), last.expected([&](QPainter& painter, const QRect& rect) {
            drawTexture(painter, rect, file.arg(1299));
        }));
        // What was scrolled away before its turn was never decoded.
        const ThumbnailKey passed{ThumbnailKey::MiddleNinth, file.arg(1150), last.rect().size()};
        QVERIFY(!delegate.Thumbnails().Find(passed, table, table->model()->index(150, 0)));
    }

private:
    QString path(const QString& name) const { return m_fixture.files.path(name); }
    std::unique_ptr<CAppearanceLibraryBrowserCtrl> browserWith(const QString& file, int count = 1)
    {
        QList<BrowserFixture::Sample> samples;
        for (int i = 0; i < count; ++i)
            samples.append({QString::number(1000 + i), "Sample", "Stone", ""});
        m_library = m_fixture.MakeLibrary("Customer Library", samples);
        for (const auto& entry : *m_library) {
            const QString own = count == 1 ? file : file.arg(QString::fromStdString(entry.first));
            entry.second->SetUseDiffuseTexture(true);
            entry.second->GetDiffuseTexture()->SetTextureFile(own.toLocal8Bit().toStdString());
        }
        auto browser = m_fixture.MakeBrowser();
        browser->AddLibrary(m_library);
        return browser;
    }

    BrowserFixture m_fixture;
    kiv::CAppearanceLibraryPtr m_library;
};

MATERIAL_TEST_MAIN(TestImageDelegate)
#include "TestImageDelegate.moc"
