#include "CloudTour.h"

#include "MainWindow.h"
#include "TourChecks.h"
#include "TourInput.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <FavoriteCategoryDlg.h>
#include <ItemRoles.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QDirIterator>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTableWidget>

#include <algorithm>

using TourChecks::await;
using TourChecks::awaitActive;
using TourChecks::awaitSettled;
using TourChecks::expect;
using TourChecks::part;

namespace {

const QString Wall = QStringLiteral("ground-wall");

}  // namespace

CloudTour::CloudTour(kiv::CMaterialLibrary& library, HostOptions& options, Tour& tour,
                     const std::unique_ptr<MainWindow>& window)
    : DialogTour(library), m_options(options), m_tour(tour), m_window(window), m_cloud(options)
{
}

CloudTour::~CloudTour() = default;

void CloudTour::addSteps(std::vector<TourStep>& steps)
{
    steps.insert(steps.end(), {{"cloud-account", [this] { refuseAddress(); }},
                               {"cloud-login", [this] { logIn(); }},
                               {"cloud-collect", [this] { collect(); }},
                               {"cloud-synchronise", [this] { synchronise(); }},
                               {"cloud-second-profile", [this] { openSecondProfile(); }},
                               {"cloud-login-elsewhere", [this] { noticeOtherLogin(); }}});
}

// ---- steps

void CloudTour::refuseAddress()
{
    m_window->openAccount();
    await([] { return QApplication::activeModalWidget(); }, "the account is asked for");
    QWidget& account = *QApplication::activeModalWidget();
    awaitActive(account);
    TourInput::retype(part<QLineEdit>(account, "cloudAddress"), "ftp://example.com/favourites");
    const QString hint = part<QLabel>(account, "cloudHint").text();
    TourInput::press(Qt::Key_Return);
    expect(account.isVisible() && part<QLabel>(account, "cloudHint").text() != hint, "the address is refused");
    m_tour.picture("refused");
    closeDialog(*m_window, [] { TourInput::press(Qt::Key_Escape); });
}

void CloudTour::logIn()
{
    openLibrary(*m_window);
    await([this] { return accountText() == "在线"; }, "the account is on line");
    expect(countsText().isEmpty(), "nothing waits for the cloud");
    awaitSettled(dialog());
}

void CloudTour::collect()
{
    showCategory("Stone");
    clickMaterial(systemMaterial("Green marble"));
    const int before = filesIn(m_options.profile + "/Favorite Library", ".json").size();
    TourInput::answerModals([this] { TourInput::click(part<QToolButton>(browser("SystemLibrary"), "collectButton")); },
                            {[this](QWidget& chooser) {
                                m_tour.picture("category");
                                expect(qobject_cast<CFavoriteCategoryDlg*>(&chooser), "the category is asked for");
                                TourInput::click(*chooser.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
                            }});
    awaitActive(dialog());
    m_count = filesIn(m_options.profile + "/Favorite Library", ".json").size();
    expect(m_count == before + 1, "the favourite is stored");
    showFavorites();
    expect(favoriteRows() == m_count, "it is listed with the others");
    awaitSettled(dialog());
}

void CloudTour::synchronise()
{
    TourInput::click(part<QToolButton>(browser("SystemLibrary"), "synchronizeButton"));
    expect(countsText().startsWith("同步成功："), "the labels count");
    m_tour.picture("counting");
    await([this] { return countsText().isEmpty(); }, "everything was sent");
    await([this] { return areAllMarked(); }, "every favourite has the cloud's mark");
    const Files there = filesIn(m_cloud.folder() + "/KIV/JsonFiles", ".json");
    expect(there.size() == m_count && there == filesIn(m_options.profile + "/Favorite Library", ".json"),
           "the cloud has every favourite as it is");
    expect(filesIn(m_cloud.folder() + "/KIV/TextureFiles", {}) == favoriteTextures(), "and its texture");
    awaitSettled(dialog());
}

/// The same person at another machine: nothing but the account is the same.
void CloudTour::openSecondProfile()
{
    closeDialog(*m_window, [] { TourInput::press(Qt::Key_Escape); });
    HostOptions options = m_options;
    options.profile = m_secondProfile.path();
    m_secondLibrary = std::make_unique<kiv::CMaterialLibrary>();
    m_secondLibrary->GetMaterialManager()->SetLanguage(options.language.toStdString());
    expect(m_secondLibrary->Open({options.data.toStdWString(), (options.data + "/textures").toStdWString(),
                                  options.profile.toStdWString()}),
           "the library opens with an empty user folder");
    m_window->hide();
    m_secondWindow = std::make_unique<MainWindow>(*m_secondLibrary, options);
    m_secondWindow->showMaximized();
    expect(m_secondWindow->start({}), "a new project starts");
    awaitActive(*m_secondWindow);
    openLibrary(*m_secondWindow);
    showFavorites();
    await([this] { return favoriteRows() == m_count; }, "the favourites come from the cloud");
    expect(filesIn(options.profile + "/Favorite Library", ".json") ==
               filesIn(m_options.profile + "/Favorite Library", ".json"),
           "they are the same to the last byte");
    lookThroughFavorites(options.profile);
    awaitSettled(dialog());
}

/// Pictures come as they are looked at.
void CloudTour::lookThroughFavorites(const QString& profile) const
{
    TourInput::clickItem(*browser("SystemLibrary").GetTableWidget(),
                         browser("SystemLibrary").GetTableWidget()->model()->index(0, 1));
    for (int row = 1; row < m_count; ++row) {
        TourInput::press(Qt::Key_Down);
        awaitSettled(dialog());
    }
    const Files textures = favoriteTextures();
    await([&] { return filesIn(profile + "/UserLib Textures", {}) == textures; }, "the textures come, too");
    awaitSettled(dialog());
}

void CloudTour::noticeOtherLogin()
{
    loginElsewhere();
    bool isAnswered = false;
    const auto answer = [&](QWidget& box) {
        const auto* question = qobject_cast<QMessageBox*>(&box);
        if (!question || !question->text().startsWith("当前账号在其他地方登录"))
            throw TourFailure("the dialog does not ask what to do");
        m_tour.picture("question");
        isAnswered = true;
        if (QAbstractButton* yes = question->button(QMessageBox::Yes))
            TourInput::click(*yes);
    };
    TourInput::answerModals(
        [&] {
            TourInput::click(part<QToolButton>(browser("SystemLibrary"), "synchronizeButton"));
            await([&] { return isAnswered; }, "the login is noticed");
        },
        {answer});
    await([this] { return accountText() == "在线"; }, "the account is on line again");
    closeDialog(*m_secondWindow, [] { TourInput::press(Qt::Key_Escape); });
}

// ---- what the steps share

void CloudTour::openLibrary(MainWindow& window) const
{
    window.selectElement(Wall);
    TourInput::press(Qt::Key_F4);
    awaitOpen();
}

void CloudTour::showFavorites() const
{
    TourInput::choose(*browser("SystemLibrary").findChild<QComboBox*>(), 1);
}

void CloudTour::loginElsewhere() const
{
    QProcess other;
    other.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    other.start(QCoreApplication::applicationFilePath(), QStringList{"--sign-in"} + m_cloud.arguments());
    expect(other.waitForFinished(TourChecks::LimitMs) && other.exitCode() == 0, "another program logs in");
}

QString CloudTour::accountText() const
{
    return part<QLabel>(dialog(), "LabelAccount").text();
}

QString CloudTour::countsText() const
{
    return part<QLabel>(dialog(), "LabelSynchronization").text();
}

int CloudTour::favoriteRows() const
{
    return browser("SystemLibrary").GetTableWidget()->rowCount();
}

// The table marks rows when they come to be seen.
bool CloudTour::areAllMarked() const
{
    const CAppearanceLibraryBrowserCtrl& system = browser("SystemLibrary");
    const auto library = system.GetCurrentLibrary();
    return system.GetTableWidget()->item(0, PictureColumn)->data(CloudRole).toBool() &&
           std::all_of(library->begin(), library->end(),
                       [](const auto& entry) { return entry.second->GetCloudFlag(); });
}

/// The pictures that the favourites name. Others lie beside them: what was unpacked for an import stays there.
CloudTour::Files CloudTour::favoriteTextures() const
{
    const QByteArrayList documents = filesIn(m_options.profile + "/Favorite Library", ".json").values();
    const QByteArray texts = documents.join();
    Files textures = filesIn(m_options.profile + "/UserLib Textures", {});
    for (auto it = textures.begin(); it != textures.end();)
        it = texts.contains(it.key().toUtf8()) ? it + 1 : textures.erase(it);
    return textures;
}

CloudTour::Files CloudTour::filesIn(const QString& folder, const QString& suffix)
{
    Files files;
    QDirIterator walk(folder, QDir::Files, QDirIterator::NoIteratorFlags);
    while (walk.hasNext()) {
        QFile file(walk.next());
        if (file.fileName().endsWith(suffix) && file.open(QIODevice::ReadOnly))
            files.insert(walk.fileName(), file.readAll());
    }
    return files;
}
