// Opening the dialog over many favourites, with as many records of the cloud to clear: how long a person waits for it,
// and whether it answers while the favourites are loaded.
#include "Ratios.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <LibraryGenerator.h>
#include <MaterialConstants.h>
#include <MaterialLibraryWidget.h>

#include <kiv/AppearanceLibraryParser.h>
#include <kiv/AppearanceParser.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProgressDialog>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QTimer>
#include <QWindow>

#include <functional>

namespace {

constexpr int FileCount = 10000;
constexpr qint64 SettleMs = 1500;
constexpr double AnswerMs = 200;
constexpr double TwoFramesMs = 1000.0 / 30;
constexpr double CancelMs = 100;

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

struct Profile {
    QTemporaryDir folder;
    kiv::CMaterialLibrary library;

    Profile()
    {
        const std::wstring data = QStringLiteral(MATERIAL_DATA_DIR).toStdWString();
        library.Open({data, data + L"/textures", folder.path().toStdWString()});
        kiv::CAppearanceLibraryManager& manager = *library.GetMaterialManager();
        const auto generated = std::make_shared<kiv::CAppearanceLibrary>();
        kiv::CAppearanceLibraryParser(manager).AppearanceLibraryFromString(generated, GenerateLibrary({FileCount}), "");
        const kiv::CAppearanceParser parser(manager);
        QDir().mkpath(favorites());
        for (const auto& entry : *generated)
            write(favorites() + '/' + QString::fromStdString(entry.first) + ".json",
                  QByteArray::fromStdString(parser.AppearanceToString(entry.second)));
    }

    QString favorites() const { return folder.filePath(QStringLiteral("Favorite Library")); }

    // Away, the favourites are not loaded by a dialog that opens.
    void hideFavorites() const { QDir().rename(favorites(), favorites() + QStringLiteral(" away")); }
    void bringFavorites() const
    {
        QDir(favorites()).removeRecursively();
        QDir().rename(favorites() + QStringLiteral(" away"), favorites());
    }

    // As at the start of a program.
    void rewind()
    {
        QDir(favorites() + QStringLiteral("/CloudLib")).removeRecursively();
        library.GetMaterialManager()->DeleteUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
        QFile::remove(folder.filePath(QStringLiteral("material-dialog.ini")));
    }
    // As after an opening that had brought everything.
    void writeRecords() const
    {
        const QString records = favorites() + QStringLiteral("/CloudLib");
        QDir().mkpath(records);
        for (int i = 0; i < FileCount; ++i)
            write(records + QStringLiteral("/%1.json").arg(i), "{}");
    }

    int loaded()
    {
        const auto found = library.GetMaterialManager()->FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
        return found ? int(found->count()) : 0;
    }
};

Profile& profile()
{
    static Profile instance;
    return instance;
}

class Dialog : public CMaterialLibraryWidget {
public:
    Dialog() : CMaterialLibraryWidget(&profile().library, false, nullptr, false, "Customer Library", true) {}

    CAppearanceLibraryBrowserCtrl& lower() const
    {
        return *findChild<CAppearanceLibraryBrowserCtrl*>(QStringLiteral("SystemLibrary"));
    }
    // From the wish: shown, painted, and a key arrives where it was typed.
    void openAndAnswer()
    {
        auto* line = findChild<QLineEdit*>(QStringLiteral("LineSearch"));
        show();
        while (!windowHandle()->isExposed())
            QCoreApplication::processEvents();
        QCoreApplication::postEvent(line, new QKeyEvent(QEvent::KeyPress, Qt::Key_Z, Qt::NoModifier, "z"));
        while (line->text() != QLatin1String("z"))
            QCoreApplication::processEvents();
        line->clear();
    }
    // Until the preview has drawn its first picture, which without a graphics card takes its time, and the timers came.
    void settle()
    {
        profile().hideFavorites();
        emit lower().OnMaterialLibraryChange(FAVORITE_LIBRARY_NAME);
        openAndAnswer();
        QElapsedTimer clock;
        clock.start();
        while (!clock.hasExpired(SettleMs))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        profile().bringFavorites();
    }
    void load() { LoadApperanceLibrary(profile().folder.path().toStdWString(), FAVORITE_LIBRARY_NAME); }
};

/// The longest time for which the event loop did not come round, in seconds.
class CGaps {
public:
    CGaps()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { take(); });
        m_timer.start(0);
        m_since.start();
    }
    double longest()
    {
        QCoreApplication::processEvents();
        return double(m_longest) / 1e9;
    }

private:
    void take()
    {
        m_longest = qMax(m_longest, m_since.nsecsElapsed());
        m_since.start();
    }

    QTimer m_timer;
    QElapsedTimer m_since;
    qint64 m_longest = 0;
};

void answer(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        profile().rewind();
        profile().writeRecords();
        QElapsedTimer clock;
        clock.start();
        Dialog dialog;
        dialog.openAndAnswer();
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        if (QDir(profile().favorites() + QStringLiteral("/CloudLib")).exists())
            state.SkipWithError("the records are still there");
    }
}

void load(benchmark::State& state, bool isShown)
{
    for ([[maybe_unused]] auto _ : state) {
        profile().rewind();
        Dialog dialog;
        dialog.settle();
        if (!isShown)
            emit dialog.lower().OnMaterialLibraryChange(SYSTEM_LIBRARY_NAME);
        CGaps gaps;
        dialog.load();
        state.SetIterationTime(gaps.longest());
        if (profile().loaded() != FileCount || (isShown && dialog.lower().GetTableWidget()->rowCount() != FileCount))
            state.SkipWithError("favourites are missing");
    }
}

void cancel(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        profile().rewind();
        Dialog dialog;
        dialog.settle();
        QElapsedTimer clock;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            auto* progress = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            if (progress && !clock.isValid() && profile().loaded() > FileCount / 3) {
                clock.start();
                progress->cancel();
            }
        });
        timer.start(0);
        dialog.load();
        QCoreApplication::processEvents();
        state.SetIterationTime(clock.isValid() ? double(clock.nsecsElapsed()) / 1e9 : 0);
        const int kept = profile().loaded();
        if (kept < FileCount / 3 || kept == FileCount || dialog.lower().GetTableWidget()->rowCount() != kept)
            state.SkipWithError("what was read is not there, or all is");
    }
}

void measure(const char* name, const std::function<void(benchmark::State&)>& run)
{
    benchmark::RegisterBenchmark(name, run)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    measure("answer", answer);
    measure("loadBehind", [](benchmark::State& state) { load(state, false); });
    measure("loadShown", [](benchmark::State& state) { load(state, true); });
    measure("cancel", cancel);
    return runBenchmarks(
        argc, argv,
        {{"from the wish to a dialog that answers, over 10,000 favourites", "answer", "", 1, AnswerMs},
         {"longest time without an answer while they are loaded / two frames", "loadBehind", "", 1, TwoFramesMs},
         {"the same, where they are shown at the end / two frames", "loadShown", "", 1, TwoFramesMs},
         {"from cancelling to going on with what was read", "cancel", "", 1, CancelMs}});
}
