#include "MaterialLibraryWidget.h"

#include "AppearanceHeading.h"
#include "EditStack.h"
#include "FavoriteLibraryLoader.h"
#include "ItemRoles.h"
#include "MaterialLibraryForm.h"

#include <AppearanceDynamicEditor.h>
#include <AppearanceLibraryBrowserCtrl.h>
#include <AppearancePreviewerCtrl.h>
#include <MaterialConstants.h>
#include <MaterialHelper.h>

#include <glenox/StdStringTrans.h>
#include <kiv/AppearanceLibraryParser.h>
#include <kiv/ShaderProgramManager.h>
#include <kiv/TextureManager.h>
#include <kiv/system/StoredPath.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTableWidget>
#include <QTimer>
#include <QToolButton>
#include <QTranslator>
#include <QTreeWidget>

#include <utility>

using kiv::GStdStringTrans;

namespace {

constexpr int StatusMs = 200;
constexpr int FavoriteLoadMs = 500;

// The comma behind the first QPushButton is a full-width one and the last brace has no partner: which widgets the
// second rule reaches depends on it, and hosts have arranged their own styles around that.
const char* const StyleSheet =
    "CMaterialLibraryWidget{background-color: rgb(255, 255, 255); color:black;font: 9pt \"simsun\";}"
    "                  "
    "QPushButton\uFF0CQLabel, QGroupBox, QRadioButton, QCheckBox,  QListView{font: 9pt \"simsun\"; color: black;}  }";

QString toQt(const kiv::String& text)
{
    return QString::fromLocal8Bit(text.c_str());
}

// The favourites' copy that the cloud fills.
QString cloudFolder(const kiv::CAppearanceLibraryManager& manager)
{
    const std::wstring& favorites = manager.GetFavoriteLibraryPath();
    return favorites.empty() ? QString() : kiv::system::JoinPath(favorites, L"Favorite Library\\CloudLib");
}

void removeFolder(const QString& path)
{
    if (path.isEmpty())
        return;
    // A link is taken away itself: what it leads to is not ours.
    if (QFileInfo(path).isSymLink())
        QFile::remove(path);
    else
        QDir(path).removeRecursively();
}

kiv::CAppearanceLibraryPtr addFavoriteLibrary(kiv::CAppearanceLibraryManager& manager)
{
    const auto library = std::make_shared<kiv::CAppearanceLibrary>();
    library->SetId(FAVORITE_LIBRARY_NAME);
    library->SetName(FAVORITE_LIBRARY_NAME);
    manager.AddUserAppearanceLibrary(library);
    return library;
}

}  // namespace

struct CMaterialLibraryWidget::Private {
    Private(kiv::CMaterialLibrary& materials, bool release, const std::string& name, bool cloud)
        : library(materials), manager(*materials.GetMaterialManager()), releaseOnClose(release),
          projectLibraryName(name), cloudEnabled(cloud)
    {
    }

    void setUpWindow(QDialog& dialog) const;
    void setUpFavorites() const;
    void showLibraries();
    void connectSignals(QDialog& dialog) const;
    void apply(const kiv::CAppearanceInstancePtr& appearance) const;
    void show(const kiv::CAppearanceInstancePtr& appearance) const;
    void followLibrary() const;
    void keepEdits();
    void showAnew(const kiv::CAppearanceInstancePtr& appearance) const;
    void showAwaited();
    void showCloudStatus() const;
    void markCloudRows() const;
    bool isFound(const kiv::CAppearanceInstancePtr& appearance, const QString& keyword) const;
    kiv::CAppearanceLibraryPtr projectLibrary() const;
    kiv::CAppearanceInstancePtr firstAppearance() const;
    static kiv::CAppearanceInstancePtr appearanceAt(const CAppearanceLibraryBrowserCtrl& browser, int row);

    kiv::CMaterialLibrary& library;
    kiv::CAppearanceLibraryManager& manager;
    bool releaseOnClose;
    std::string projectLibraryName;
    bool cloudEnabled;
    std::function<void(const kiv::CAppearanceInstancePtr&)> reactor;
    CMaterialLibraryForm form;
    kiv::CAppearanceInstancePtr awaited;  ///< shown although textures of it are not here yet
    bool hasEdits = false;                ///< that wait to be kept or taken back
    QTimer statusTimer;
    QTimer favoriteLoadTimer;
};

CMaterialLibraryWidget::CMaterialLibraryWidget(AppearanceLibraryProvider* provider, kiv::CMaterialLibrary* library,
                                               bool releaseOnClose, QWidget* parent, bool loadTranslation,
                                               const std::string& projectLibraryName, bool cloudEnabled)
    : QDialog(parent), m(std::make_unique<Private>(*library, releaseOnClose, projectLibraryName, cloudEnabled))
{
    Initilize(provider, loadTranslation);
}

CMaterialLibraryWidget::CMaterialLibraryWidget(kiv::CMaterialLibrary* library, bool releaseOnClose, QWidget* parent,
                                               bool loadTranslation, const std::string& projectLibraryName,
                                               bool cloudEnabled)
    : CMaterialLibraryWidget(nullptr, library, releaseOnClose, parent, loadTranslation, projectLibraryName,
                             cloudEnabled)
{
}

// Destroyed while it was open: nobody is left who could take its edits back.
CMaterialLibraryWidget::~CMaterialLibraryWidget()
{
    m->keepEdits();
}

// ---- set-up

void CMaterialLibraryWidget::Initilize(AppearanceLibraryProvider* provider, bool loadTranslation)
{
    if (loadTranslation) {
        auto* translator = new QTranslator(this);
        if (translator->load(QCoreApplication::applicationDirPath() + QStringLiteral("/materialui_zh.qm")))
            QCoreApplication::installTranslator(translator);
    }
    setWindowTitle(tr("材质库"));
    m->setUpWindow(*this);
    m->form.Build(*this, m->library, provider, m->cloudEnabled);
    m->setUpFavorites();
    m->showLibraries();
    if (const auto first = m->firstAppearance()) {
        OnSelectAppearance(first);
        m->form.systemBrowser->SelectTableItem(toQt(first->GetId()));
    }
    m->showCloudStatus();
    m->connectSignals(*this);
    setSizeGripEnabled(provider != nullptr);
    m->form.searchLine->setFocus();
}

void CMaterialLibraryWidget::Private::setUpWindow(QDialog& dialog) const
{
    dialog.setStyleSheet(QString::fromUtf8(StyleSheet));
    dialog.setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    dialog.setObjectName(QStringLiteral("MaterialLibrary"));
    dialog.setMinimumWidth(100);
    dialog.resize(590, 520);
}

// The library of favourites starts empty and is filled once the dialog is on the screen.
void CMaterialLibraryWidget::Private::setUpFavorites() const
{
    const std::wstring& favorites = manager.GetFavoriteLibraryPath();
    manager.SetFavoriteLibraryTexturePath(favorites.empty() ? favorites : favorites + L"\\Favorite Texture");
    removeFolder(cloudFolder(manager));
    manager.DeleteUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    addFavoriteLibrary(manager);
    if (cloudEnabled)
        kiv::CAppearanceLibraryParser(manager).ConfigLibrayFromFile(manager.GetLibraryPath());
}

void CMaterialLibraryWidget::Private::showLibraries()
{
    if (const auto project = projectLibrary())
        form.projectBrowser->AddLibrary(project);
    form.systemBrowser->GetTreeWidget()->clear();
    form.systemBrowser->AddLibrary(manager.GetSystemLibrary());
    form.systemBrowser->GetTableWidget()->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void CMaterialLibraryWidget::Private::connectSignals(QDialog& dialog) const
{
    for (CAppearanceLibraryBrowserCtrl* browser : {form.projectBrowser, form.systemBrowser}) {
        connect(browser, SIGNAL(OnSelectAppearance(const kiv::CAppearanceInstancePtr&)), &dialog,
                SLOT(OnSelectAppearance(const kiv::CAppearanceInstancePtr&)));
        connect(browser->GetTableWidget(), SIGNAL(doubleClicked(QModelIndex)), &dialog,
                SLOT(OnDoubleClickTableWidget(QModelIndex)));
    }
    connect(form.systemBrowser, SIGNAL(OnMaterialLibraryChange(const kiv::String&)), &dialog,
            SLOT(OnMaterialLibraryChange(const kiv::String&)));
    connect(form.systemBrowser->GetTableWidget()->verticalScrollBar(), SIGNAL(valueChanged(int)), &dialog,
            SLOT(OnVerticalScrollBarChanged(int)));
    connect(form.previewer->GetApplyButton(), SIGNAL(pressed()), &dialog, SLOT(OnApplyAppearanceButton()));
    connect(form.previewer, SIGNAL(SaveAppearance(const kiv::CAppearanceInstancePtr&)), form.projectBrowser,
            SLOT(OnAddAppearance(const kiv::CAppearanceInstancePtr&)));
    connect(form.heading->GetApplyButton(), SIGNAL(pressed()), &dialog, SLOT(OnApplyAppearanceButton()));
    connect(form.editor, SIGNAL(OnAppearancePropertyChanged(const kiv::CAppearanceInstancePtr&, const kiv::String&)),
            &dialog, SLOT(OnAppearancePropertyChanged(const kiv::CAppearanceInstancePtr&, const kiv::String&)));
    connect(form.editor, SIGNAL(OnTransformEditedData(const kiv::String&)), &dialog,
            SLOT(OnTransformEditedData(const kiv::String&)));
    connect(form.editor, SIGNAL(OnApplyTexture()), &dialog, SLOT(OnApply()));
    connect(new QShortcut(QKeySequence::Undo, &dialog), SIGNAL(activated()), &dialog, SLOT(OnUndo()));
    connect(form.searchLine, SIGNAL(textChanged(const QString&)), &dialog, SLOT(OnSearchValueChanged(const QString&)));
    connect(form.searchLine, SIGNAL(returnPressed()), &dialog, SLOT(OnSearchValueChangedSlot()));
    connect(form.applyButton, SIGNAL(pressed()), &dialog, SLOT(OnApply()));
}

// With the cloud enabled hosts expect the second row to come up first.
kiv::CAppearanceInstancePtr CMaterialLibraryWidget::Private::firstAppearance() const
{
    if (form.systemBrowser->GetTableWidget()->rowCount() <= 1)
        return {};
    return appearanceAt(*form.systemBrowser, cloudEnabled ? 1 : 0);
}

// ---- what hosts call

void CMaterialLibraryWidget::SetCurrentMaterial(const std::wstring& id)
{
    if (const auto library = m->projectLibrary())
        m->form.projectBrowser->SelectAppearance(library->FindInstance(GStdStringTrans::WStringToString(id)));
}

std::wstring CMaterialLibraryWidget::GetCurrentMaterialID() const
{
    const auto library = m->projectLibrary();
    const QString id = m->form.projectBrowser->GetCurSel();
    const bool isThere = library && library->FindInstance(id.toLocal8Bit().toStdString());
    return isThere ? id.toStdWString() : std::wstring();
}

void CMaterialLibraryWidget::UpdateBrowserLibrary()
{
    if (const auto library = m->projectLibrary())
        m->form.projectBrowser->UpdateLibrary(library);
    m->followLibrary();
}

// What is edited may have been taken away or replaced by the host.
void CMaterialLibraryWidget::Private::followLibrary() const
{
    const kiv::CAppearanceInstancePtr edited = form.editor->GetAppearance();
    const auto library = projectLibrary();
    if (!edited || !library || !form.editor->isEnabled())
        return;
    const auto now = library->FindInstance(edited->GetId());
    const auto favorites = manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    const bool isFavorite = favorites && favorites->FindInstance(edited->GetId()) == edited;
    if (now == edited || isFavorite)
        return;
    if (now)
        show(now);
    else
        form.editor->setEnabled(false);
}

void CMaterialLibraryWidget::SetApplyAppearanceReactor(
    const std::function<void(const kiv::CAppearanceInstancePtr&)>& reactor)
{
    m->reactor = reactor;
}

kiv::CAppearanceLibraryPtr CMaterialLibraryWidget::Private::projectLibrary() const
{
    return manager.FindUserAppearanceLibrary(projectLibraryName);
}

// ---- selecting and applying

void CMaterialLibraryWidget::OnSelectAppearance(const kiv::CAppearanceInstancePtr& appearance)
{
    if (!appearance) {
        m->form.editor->setEnabled(false);
        return;
    }
    if (!kiv::CMaterialHelper::CheckResourceComplete(appearance, m->manager))
        m->awaited = appearance;
    m->show(appearance);
    m->apply(appearance);
}

void CMaterialLibraryWidget::OnApply()
{
    m->keepEdits();
    QString id = m->form.projectBrowser->GetCurSel();
    const QPointer<CMaterialLibraryWidget> alive(this);
    emit MatApply(id);
    if (alive)
        accept();
}

void CMaterialLibraryWidget::OnApplyAppearanceButton()
{
    const kiv::CAppearanceInstancePtr appearance = m->form.previewer->GetAppearance();
    if (!appearance)
        return;
    ApplyAppearance(appearance);
    m->apply(appearance);
}

void CMaterialLibraryWidget::OnDoubleClickTableWidget(QModelIndex index)
{
    const bool isSystem = index.model() == m->form.systemBrowser->GetTableWidget()->model();
    const auto appearance = m->appearanceAt(isSystem ? *m->form.systemBrowser : *m->form.projectBrowser, index.row());
    if (!appearance)
        return;
    if (isSystem) {
        DoubleClickSystemBrowserFunc(appearance);
    } else {
        ApplyAppearance(appearance);
        m->apply(appearance);
    }
}

void CMaterialLibraryWidget::Private::show(const kiv::CAppearanceInstancePtr& appearance) const
{
    form.previewer->SetAppearance(appearance);
    form.heading->ShowAppearance(appearance);
    form.editor->SetAppearance(appearance);
    form.editor->setEnabled(appearance->GetEditType() >= 1);
}

// The same object with other values.
void CMaterialLibraryWidget::Private::showAnew(const kiv::CAppearanceInstancePtr& appearance) const
{
    if (appearance == form.editor->GetAppearance())
        form.editor->Refresh();
    if (appearance == form.previewer->GetAppearance())
        show(appearance);
}

// The host's function may set another one while it runs.
void CMaterialLibraryWidget::Private::apply(const kiv::CAppearanceInstancePtr& appearance) const
{
    if (const auto call = reactor)
        call(appearance);
}

kiv::CAppearanceInstancePtr CMaterialLibraryWidget::Private::appearanceAt(const CAppearanceLibraryBrowserCtrl& browser,
                                                                          int row)
{
    const QTableWidgetItem* item = browser.GetTableWidget()->item(row, NameColumn);
    const auto library = browser.GetCurrentLibrary();
    return item && library ? library->FindInstance(item->data(IdRole).toString().toLocal8Bit().toStdString()) : nullptr;
}

// ---- editing

void CMaterialLibraryWidget::OnTransformEditedData(const kiv::String& record)
{
    CEditStack::Instance().Push(record);
    m->hasEdits = true;
}

void CMaterialLibraryWidget::OnAppearancePropertyChanged(const kiv::CAppearanceInstancePtr& appearance,
                                                         const kiv::String& key)
{
    for (CAppearanceLibraryBrowserCtrl* browser : {m->form.projectBrowser, m->form.systemBrowser})
        browser->OnAppearancePropertyChanged(appearance, key);
    if (appearance == m->form.previewer->GetAppearance()) {
        m->form.previewer->SetAppearance(appearance);
        m->form.heading->ShowAppearance(appearance);
    }
    const QPointer<CMaterialLibraryWidget> alive(this);
    AppearancePropertyChangedFunc(appearance, key);
    if (alive)
        emit AppearanceEdited(appearance);
}

// The records of another dialog are its own business.
void CMaterialLibraryWidget::Private::keepEdits()
{
    if (std::exchange(hasEdits, false))
        CEditStack::Instance().Clear();
}

void CMaterialLibraryWidget::OnUndo()
{
    if (!m->hasEdits)
        return;
    if (const auto appearance = CEditStack::Instance().TakeBackLast(m->manager, m->projectLibrary()))
        showTakenBack({appearance});
}

void CMaterialLibraryWidget::OnRevocation()
{
    reject();
}

void CMaterialLibraryWidget::done(int result)
{
    const QPointer<CMaterialLibraryWidget> alive(this);
    if (result != Rejected)
        m->keepEdits();
    else if (std::exchange(m->hasEdits, false))
        showTakenBack(CEditStack::Instance().TakeBackAll(m->manager, m->projectLibrary()));
    if (alive)
        QDialog::done(result);
}

void CMaterialLibraryWidget::showTakenBack(const std::set<kiv::CAppearanceInstancePtr>& appearances)
{
    if (appearances.empty())
        return;
    UpdateBrowserLibrary();
    const QPointer<CMaterialLibraryWidget> alive(this);
    for (const auto& appearance : appearances) {
        if (!alive)
            return;
        m->showAnew(appearance);
        emit AppearanceEdited(appearance);
    }
}

// ---- searching and switching

void CMaterialLibraryWidget::OnSearchValueChanged(const QString& text)
{
    m->form.projectBrowser->onSearchKeyWord(text);
}

void CMaterialLibraryWidget::OnSearchValueChangedSlot()
{
    const QString text = m->form.searchLine->text();
    OnSearchValueChanged(text);
    // Only on Return: whatever is selected below is applied at once, which no half-typed word should do.
    if (!text.isEmpty() && !m->isFound(m->form.projectBrowser->GetCurrentApperance(), text))
        m->form.systemBrowser->onSearchKeyWord(text);
}

// A search that matches anything ends on a match; so the selection tells whether there is one.
bool CMaterialLibraryWidget::Private::isFound(const kiv::CAppearanceInstancePtr& appearance,
                                              const QString& keyword) const
{
    if (!appearance)
        return false;
    return toQt(manager.LocalizeAppearanceString(appearance->GetName())).contains(keyword, Qt::CaseInsensitive) ||
           toQt(appearance->GetTags()).contains(keyword, Qt::CaseInsensitive);
}

void CMaterialLibraryWidget::OnMaterialLibraryChange(const kiv::String& libraryName)
{
    const bool isSystem = libraryName == SYSTEM_LIBRARY_NAME;
    const auto library =
        isSystem ? m->manager.GetSystemLibrary() : m->manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    m->form.systemBrowser->SetComboBoxCurrentItem(libraryName);
    m->form.systemBrowser->GetTreeWidget()->clear();
    m->form.systemBrowser->AddLibrary(library);
}

// Part of the interface to derived widgets; nothing happens here.
void CMaterialLibraryWidget::OnVerticalScrollBarChanged(int /*value*/)
{
}

// ---- events and timers

// The connections add up on purpose: derived widgets count on one call for each time that the dialog was shown.
void CMaterialLibraryWidget::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    m->statusTimer.setInterval(StatusMs);
    m->favoriteLoadTimer.setInterval(FavoriteLoadMs);
    connect(&m->statusTimer, SIGNAL(timeout()), this, SLOT(onTimerOut()));
    connect(&m->favoriteLoadTimer, SIGNAL(timeout()), this, SLOT(onJsonTimerOut()));
    m->statusTimer.start();
    m->favoriteLoadTimer.start();
}

void CMaterialLibraryWidget::hideEvent(QHideEvent* event)
{
    m->statusTimer.stop();
    m->favoriteLoadTimer.stop();
    QDialog::hideEvent(event);
}

void CMaterialLibraryWidget::closeEvent(QCloseEvent* event)
{
    QDialog::closeEvent(event);
    if (!m->releaseOnClose)
        return;
    kiv::CTextureManager::ReleaseTextures();
    kiv::CShaderProgramManager::GetInstance().UnloadAll();
}

// In the search line the key goes to the match, and in the editor it ends an entry; neither is meant for the default
// button.
void CMaterialLibraryWidget::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const QWidget* focused = focusWidget();
    if (isEnter && focused && (focused == m->form.searchLine || m->form.editor->isAncestorOf(focused)))
        event->accept();
    else
        QDialog::keyPressEvent(event);
}

void CMaterialLibraryWidget::onTimerOut()
{
    m->showAwaited();
    m->showCloudStatus();
    m->markCloudRows();
    const QString folder = cloudFolder(m->manager);
    if (!folder.isEmpty() && !QFileInfo::exists(folder))
        QDir().mkpath(folder);
}

// Looked at on one tick only.
void CMaterialLibraryWidget::Private::showAwaited()
{
    if (!cloudEnabled || !awaited)
        return;
    if (awaited == form.previewer->GetAppearance() && kiv::CMaterialHelper::CheckResourceComplete(awaited, manager))
        showAnew(awaited);
    awaited.reset();
}

// Nobody can log in yet, and nothing is synchronised.
void CMaterialLibraryWidget::Private::showCloudStatus() const
{
    if (cloudEnabled)
        form.accountLabel->setText(tr("离线"));
}

void CMaterialLibraryWidget::Private::markCloudRows() const
{
    QTableWidget* table = form.systemBrowser->GetTableWidget();
    const int end = table->rowAt(table->height());
    const int last = end < 0 ? table->rowCount() - 1 : end;
    bool isChanged = false;
    for (int row = qMax(0, table->rowAt(0)); row <= last; ++row) {
        const auto appearance = appearanceAt(*form.systemBrowser, row);
        const QTableWidgetItem* item = table->item(row, PictureColumn);
        if (appearance && appearance->GetCloudFlag() && item && !item->data(CloudRole).toBool())
            isChanged = form.systemBrowser->ModifyTableWidgetItemCloud(appearance) || isChanged;
    }
    if (isChanged)
        table->viewport()->update();
}

// One tick calls this as often as the dialog was shown, but loads once.
void CMaterialLibraryWidget::onJsonTimerOut()
{
    if (sender() == &m->favoriteLoadTimer && !m->favoriteLoadTimer.isActive())
        return;
    m->favoriteLoadTimer.stop();
    if (m->manager.GetFavoriteLibraryPath().empty()) {
        QMessageBox::critical(this, tr("严重错误"), tr("系统文件夹不完整,收藏功能不可用！"), QMessageBox::Ok);
        close();
    } else if (m->cloudEnabled) {
        LoadApperanceLibrary(m->manager.GetFavoriteLibraryPath(), FAVORITE_LIBRARY_NAME);
    }
}

void CMaterialLibraryWidget::LoadApperanceLibrary(const std::wstring& root, const std::string& libraryName)
{
    auto library = m->manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    if (!library)
        library = addFavoriteLibrary(m->manager);
    const QString folder = kiv::system::JoinPath(root, GStdStringTrans::StringToWString(libraryName));
    QDir().mkpath(folder);
    const QPointer<CMaterialLibraryWidget> alive(this);
    CFavoriteLibraryLoader(m->manager, *this).Load(folder, *library);
    if (alive)
        m->form.systemBrowser->UpdateFavoriteLibrary(library);
}

// ---- virtual operations

void CMaterialLibraryWidget::DoubleClickSystemBrowserFunc(const kiv::CAppearanceInstancePtr& appearance)
{
    ApplyAppearance(appearance);
    m->apply(appearance);
}

void CMaterialLibraryWidget::AppearancePropertyChangedFunc(const kiv::CAppearanceInstancePtr&, const std::string&)
{
}

kiv::CAppearanceInstancePtr CMaterialLibraryWidget::CopyandAddAppearanceFunc(const kiv::CAppearanceInstancePtr&)
{
    return {};
}

bool CMaterialLibraryWidget::AddFavoriteAppearanceFunc(const kiv::CAppearanceInstancePtr&, const std::string&)
{
    return false;
}

bool CMaterialLibraryWidget::AddFavoriteTexturesFunc()
{
    return false;
}

void CMaterialLibraryWidget::SynchronizedCloudFunc()
{
}

void CMaterialLibraryWidget::AppearanceDeletedFunc(const kiv::CAppearanceInstancePtr&)
{
}

void CMaterialLibraryWidget::AppearanceRemoveFunc(const kiv::CAppearanceInstancePtr&)
{
}

std::wstring CMaterialLibraryWidget::NewMaterialId()
{
    return GStdStringTrans::StringToWString(kiv::CMaterialLibrary::newGUID());
}

void CMaterialLibraryWidget::ApplyAppearance(const kiv::CAppearanceInstancePtr&)
{
}
