#include "MaterialLibraryWidgetPrivate.h"

#include "AppearanceHeading.h"
#include "DialogState.h"
#include "EditStack.h"
#include "FavoriteLibrarySetUp.h"
#include "ItemRoles.h"

#include <AppearanceDynamicEditor.h>
#include <AppearanceLibraryBrowserCtrl.h>
#include <AppearancePreviewerCtrl.h>
#include <CloudService.h>
#include <MaterialConstants.h>
#include <MaterialHelper.h>
#include <MessageBoxes.h>

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
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTableWidget>
#include <QToolButton>
#include <QTranslator>
#include <QTreeWidget>

#include <algorithm>
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

}  // namespace

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
    m->leaveCloud();
}

// ---- set-up

void CMaterialLibraryWidget::Initilize(AppearanceLibraryProvider* provider, bool loadTranslation)
{
    m->resetCloud();
    if (loadTranslation) {
        auto* translator = new QTranslator(this);
        if (translator->load(QCoreApplication::applicationDirPath() + QStringLiteral("/materialui_zh.qm")))
            QCoreApplication::installTranslator(translator);
    }
    setWindowTitle(tr("材质库"));
    m->setUpWindow(*this);
    m->form.Build(*this, m->library, provider, m->cloudEnabled);
    SetUpFavoriteLibrary(m->manager);
    if (m->cloudEnabled)
        kiv::CAppearanceLibraryParser(m->manager).ConfigLibrayFromFile(m->manager.GetLibraryPath());
    m->showLibraries();
    if (const auto first = m->firstAppearance()) {
        OnSelectAppearance(first);
        m->form.systemBrowser->SelectTableItem(toQt(first->GetId()));
    }
    m->connectSignals(*this);
    m->connectOperations(*this);
    setSizeGripEnabled(provider != nullptr);
    m->form.searchLine->setFocus();
    CDialogState(m->manager, *this, m->form).Restore();
}

void CMaterialLibraryWidget::Private::setUpWindow(QDialog& dialog) const
{
    dialog.setStyleSheet(QString::fromUtf8(StyleSheet));
    dialog.setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    dialog.setObjectName(QStringLiteral("MaterialLibrary"));
    dialog.setMinimumWidth(100);
    dialog.resize(590, 520);
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
    connectFavorites(dialog);
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

void CMaterialLibraryWidget::Private::connectFavorites(QDialog& dialog) const
{
    for (CAppearanceLibraryBrowserCtrl* browser : {form.projectBrowser, form.systemBrowser})
        connect(browser, SIGNAL(OnAddFavoriteAppearance(const kiv::CAppearanceInstancePtr&, const kiv::String&)),
                &dialog, SLOT(OnAddFavoriteAppearance(const kiv::CAppearanceInstancePtr&, const kiv::String&)));
    connect(form.systemBrowser, SIGNAL(OnRemoveApperance(kiv::CAppearanceInstancePtr&)), &dialog,
            SLOT(OnRemoveApperance(kiv::CAppearanceInstancePtr&)));
    connect(form.systemBrowser, SIGNAL(OnAddFavoriteTextures()), &dialog, SLOT(OnAddFavoriteTextures()));
    connect(form.systemBrowser, SIGNAL(OnSynchronizedCloud()), &dialog, SLOT(OnSynchronizedCloud()));
    if (!cloudEnabled)
        return;
    connect(&CCloudService::Instance().GetLoginTimer(), SIGNAL(timeout()), &dialog, SLOT(onLoginSuccessTimer()));
    connect(&CCloudService::Instance(), SIGNAL(onRemoveAppearance(const QString&)), &dialog,
            SLOT(onRemoveAppearance(const QString&)));
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
    auto library = m->projectLibrary();
    if (!library) {
        library = std::make_shared<kiv::CAppearanceLibrary>();
        library->SetName(m->projectLibraryName);
    }
    m->form.projectBrowser->UpdateLibrary(library);
    m->followLibrary();
}

// What is shown may have been taken away or replaced, by the host, by deleting it or by taking something back.
void CMaterialLibraryWidget::Private::followLibrary() const
{
    const kiv::CAppearanceInstancePtr shown = form.editor->GetAppearance();
    if (!shown || isKnown(shown))
        return;
    const auto library = projectLibrary();
    if (const auto now = library ? library->FindInstance(shown->GetId()) : nullptr) {
        show(now);
        return;
    }
    form.previewer->SetAppearance({});
    form.heading->ShowAppearance({});
    form.editor->setEnabled(false);
}

bool CMaterialLibraryWidget::Private::isKnown(const kiv::CAppearanceInstancePtr& appearance) const
{
    return std::any_of(manager.beginLibrary(), manager.endLibrary(), [&](const auto& entry) {
        return entry.second->FindInstance(appearance->GetId()) == appearance;
    });
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
    if (m->needsCloud(appearance)) {
        MessageBoxes::Ask(this, QMessageBox::Information, QStringLiteral("提示"),
                          QStringLiteral("当前网络异常，云端数据不可用！"), QMessageBox::Ok, QMessageBox::Ok);
        return;
    }
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
    // What the editor has built comes behind the button otherwise.
    QWidget* last = form.applyButton->window()->previousInFocusChain();
    while (last->focusPolicy() == Qt::NoFocus)
        last = last->previousInFocusChain();
    QWidget::setTabOrder(last, form.applyButton);
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
    CEditStack::Instance().Push(record, m.get());
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
    CEditStack::Instance().Clear(this);
}

void CMaterialLibraryWidget::OnUndo()
{
    if (const auto appearance = CEditStack::Instance().TakeBackLast(m.get(), m->manager, m->projectLibrary()))
        showTakenBack({appearance});
}

void CMaterialLibraryWidget::OnRevocation()
{
    reject();
}

void CMaterialLibraryWidget::done(int result)
{
    const QPointer<CMaterialLibraryWidget> alive(this);
    ++m->openings;
    if (result != Rejected)
        m->keepEdits();
    else
        showTakenBack(CEditStack::Instance().TakeBackAll(m.get(), m->manager, m->projectLibrary()));
    if (alive)
        QDialog::done(result);
}

void CMaterialLibraryWidget::showTakenBack(const std::set<kiv::CAppearanceInstancePtr>& appearances)
{
    if (appearances.empty())
        return;
    UpdateBrowserLibrary();
    const QPointer<CMaterialLibraryWidget> alive(this);
    const auto project = m->projectLibrary();
    for (const auto& appearance : appearances) {
        if (!alive)
            return;
        if (project && project->FindInstance(appearance->GetId()) == appearance)
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
    CCloudService::Instance().SetVisible(true);
}

void CMaterialLibraryWidget::hideEvent(QHideEvent* event)
{
    CDialogState(m->manager, *this, m->form).Save();
    m->statusTimer.stop();
    m->favoriteLoadTimer.stop();
    CCloudService::Instance().SetVisible(false);
    QDialog::hideEvent(event);
}

void CMaterialLibraryWidget::closeEvent(QCloseEvent* event)
{
    const bool isReleasing = m->releaseOnClose;
    QDialog::closeEvent(event);  // after which a host may have deleted the dialog
    if (!isReleasing)
        return;
    kiv::CTextureManager::ReleaseTextures();
    kiv::CShaderProgramManager::GetInstance().UnloadAll();
}

// In the search line Enter goes to the match, and in the editor it ends an entry; neither is meant for the default
// button. Whoever renames a row comes back to it by Enter, and by Escape with the name as it was.
void CMaterialLibraryWidget::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const QWidget* focused = focusWidget();
    if (focused && m->renaming.line == focused && (isEnter || event->key() == Qt::Key_Escape)) {
        event->accept();
        m->endRenaming(isEnter);
    } else if (isEnter && focused && (focused == m->form.searchLine || m->form.editor->isAncestorOf(focused))) {
        event->accept();
    } else {
        QDialog::keyPressEvent(event);
    }
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

std::wstring CMaterialLibraryWidget::NewMaterialId()
{
    return GStdStringTrans::StringToWString(kiv::CMaterialLibrary::newGUID());
}

void CMaterialLibraryWidget::ApplyAppearance(const kiv::CAppearanceInstancePtr&)
{
}

void CMaterialLibraryWidget::AppearanceDownloadFunc(const QString&)
{
}

int CMaterialLibraryWidget::CountAppearanceUses(const kiv::CAppearanceInstancePtr&)
{
    return 0;
}
