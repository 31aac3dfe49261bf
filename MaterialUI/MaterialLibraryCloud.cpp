// The cloud account, the favourites that it mirrors, and the timers that look after them.

#include "DialogState.h"
#include "FavoriteLibraryLoader.h"
#include "FavoriteLibrarySetUp.h"
#include "ItemRoles.h"
#include "MaterialLibraryWidgetPrivate.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <AppearancePreviewerCtrl.h>
#include <CloudService.h>
#include <CloudState.h>
#include <KIVLoginCallback.h>
#include <LoginCallback.h>
#include <MaterialConstants.h>
#include <MaterialHelper.h>
#include <MessageBoxes.h>
#include <NetworkStatusMonitor.h>

#include <glenox/StdStringTrans.h>
#include <nuvs/NUVSCloudService.h>

#include <kiv/system/StoredPath.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPointer>
#include <QTableWidget>
#include <QToolButton>

#include <utility>

using kiv::GStdStringTrans;

namespace {

const QString ClientVersion = QStringLiteral("1.0");
const QString Product = QStringLiteral("KIV");

// Texts of the account are shown as they are in every language.
const QString HintTitle = QStringLiteral("提示");

QString countsText(const CSynchronizationStatus::Counts& counts)
{
    return QStringLiteral("同步成功：") + QString::number(counts.succeeded) + QStringLiteral("  同步失败：") +
           QString::number(counts.failed) + QStringLiteral("  等待同步：") + QString::number(counts.waiting);
}

// The dialog, or a window that it belongs to, may be modal itself.
bool isBoxOpenOver(const QWidget& dialog)
{
    const QWidget* modal = QApplication::activeModalWidget();
    for (const QWidget* widget = &dialog; widget; widget = widget->parentWidget()) {
        if (widget == modal)
            return false;
    }
    return modal;
}

INUVSAccountService& account()
{
    return *getNUVSCloudService()->accountService();
}

}  // namespace

// ---- the account

void CMaterialLibraryWidget::Login(QString a, QString b, QString c, QString product, bool notifyOnSuccess)
{
    account().login(a, b, c, ClientVersion, product, new KIVLoginCallback(notifyOnSuccess));
}

void CMaterialLibraryWidget::Logout()
{
    account().logout(new NUVSDefaultLogoutCallback);
}

bool CMaterialLibraryWidget::IsLogin()
{
    return account().isLogin();
}

void CMaterialLibraryWidget::SetLoginCallback(LoginCallback* callback)
{
    m->loginCallback = callback;
    CCloudService::Instance().SetLoginCallback(callback);
    if (m->cloudEnabled)
        m->isOnline = SetLogin();
}

bool CMaterialLibraryWidget::SetLogin()
{
    if (!m->loginCallback)
        return false;
    LoginAccountInfo info;
    if (m->loginCallback->GetLoginInfo(info))
        Login(info.a, info.b, info.c, Product, true);
    else
        Logout();
    return IsLogin();
}

bool CMaterialLibraryWidget::MaterialLibraryLogin()
{
    return m->loginCallback && m->loginCallback->IsLoginEnabled() && SetLogin();
}

void CMaterialLibraryWidget::Private::resetCloud() const
{
    CCloudService::Instance().Open(mirror.Folders());
    if (cloudEnabled)
        CCloudService::Instance().Attach();
}

void CMaterialLibraryWidget::Private::leaveCloud() const
{
    CCloudService& cloud = CCloudService::Instance();
    if (cloudEnabled)
        cloud.Detach();
    if (cloud.GetLoginCallback() == loginCallback)
        cloud.SetLoginCallback(nullptr);
}

// The first dialog that is told stops the timer; the others learn of the login from their status.
void CMaterialLibraryWidget::onLoginSuccessTimer()
{
    CCloudService& cloud = CCloudService::Instance();
    cloud.GetLoginTimer().stop();
    cloud.GetDownloads().GetInformation().Reset();
    if (!IsLogin()) {
        m->isSyncPending = false;
        return;
    }
    m->isOnline = true;
    CloudState::TakeError();
    CloudState::TakeWarning();
    cloud.Restart();
    m->synchronizeIfPending(*this);
    LoadSysLibMaterialIndex();
    if (m->manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME))
        LoadFavLibMaterialJson();
}

// What still waits belongs to the session before; it ends soon.
void CMaterialLibraryWidget::Private::synchronizeIfPending(CMaterialLibraryWidget& dialog)
{
    if (!isSyncPending || !IsLogin() || CCloudService::Instance().GetStatus().GetWaiting() != 0)
        return;
    isSyncPending = false;
    dialog.SynchronizedCloudFunc();
}

void CMaterialLibraryWidget::LoadSysLibMaterialIndex()
{
    CCloudService::Instance().LoadTextureIndex();
}

void CMaterialLibraryWidget::LoadFavLibMaterialJson()
{
    CCloudService::Instance().LoadDocuments();
}

// ---- sending favourites

// Who synchronises wants to see, too, what other machines sent meanwhile.
void CMaterialLibraryWidget::OnSynchronizedCloud()
{
    if (IsLogin()) {
        SynchronizedCloudFunc();
        LoadSysLibMaterialIndex();
        LoadFavLibMaterialJson();
        return;
    }
    m->isSyncPending = true;
    if (m->loginCallback)
        MaterialLibraryLogin();
}

void CMaterialLibraryWidget::SynchronizedCloudFunc()
{
    CCloudService& cloud = CCloudService::Instance();
    if (!NetworkStatusMonitor::Instance().IsOnline() || cloud.GetStatus().GetWaiting() != 0)
        return;
    const CFavoriteMirror::Files files = m->mirror.Collect();
    if (files.documents.isEmpty())
        return;
    cloud.GetStatus().Set({files.documents.size(), 0, 0});
    m->showSynchronization();
    cloud.StartUpload(files.documents, files.textures);
}

// ---- adding and removing favourites

void CMaterialLibraryWidget::OnAddFavoriteTextures()
{
    AddFavoriteTexturesFunc();
}

// A favourite is not collected again: then what is selected in the project is meant.
bool CMaterialLibraryWidget::AddFavoriteTexturesFunc()
{
    const auto isMeant = [this](const CAppearanceLibraryBrowserCtrl& browser) {
        const auto selected = browser.GetCurrentApperance();
        return selected && selected == m->form.previewer->GetAppearance() && !m->isFavorite(selected);
    };
    for (CAppearanceLibraryBrowserCtrl* browser : {m->form.systemBrowser, m->form.projectBrowser}) {
        if (isMeant(*browser)) {
            browser->OnMenuAddFavoriteAppearance();
            return true;
        }
    }
    return false;
}

void CMaterialLibraryWidget::OnAddFavoriteAppearance(const kiv::CAppearanceInstancePtr& appearance,
                                                     const kiv::String& category)
{
    AddFavoriteAppearanceFunc(appearance, category);
}

bool CMaterialLibraryWidget::AddFavoriteAppearanceFunc(const kiv::CAppearanceInstancePtr& appearance,
                                                       const std::string& category)
{
    const auto favorite = kiv::CMaterialHelper::AddFavorite(appearance, category, m->manager, &m->library);
    if (!favorite)
        return false;
    m->mirror.PointAtCopies(*favorite);
    CCloudService::Instance().KeepFavorite(QString::fromLocal8Bit(favorite->GetId().c_str()));
    if (const auto favorites = m->manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME)) {
        favorites->AddInstance(favorite);
        m->form.systemBrowser->UpdateFavoriteLibrary(favorites);
    }
    return true;
}

bool CMaterialLibraryWidget::Private::isFavorite(const kiv::CAppearanceInstancePtr& appearance) const
{
    const auto favorites = manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    return favorites && appearance && favorites->FindInstance(appearance->GetId()) == appearance;
}

void CMaterialLibraryWidget::OnRemoveApperance(kiv::CAppearanceInstancePtr& appearance)
{
    AppearanceRemoveFunc(appearance);
}

// What the cloud has of it goes with one of the next ticks, or once somebody is logged in. Without a session nobody
// knows whether the cloud has something: the mark is no sign of that. Textures stay here: materials of this project,
// and of others that nobody knows of here, may have them from a copy or an archive.
void CMaterialLibraryWidget::AppearanceRemoveFunc(const kiv::CAppearanceInstancePtr& appearance)
{
    const auto favorites = m->manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    if (!appearance || !favorites)
        return;
    const QString reason = m->mirror.RemoveDocument(*appearance);
    if (!reason.isEmpty()) {
        m->complainOfRemoval(*this, QString::fromLocal8Bit(appearance->GetName().c_str()) + "：" + reason);
        return;
    }
    if (m->cloudEnabled)
        CCloudService::Instance().RemoveFavorite(QString::fromLocal8Bit(appearance->GetId().c_str()),
                                                 CFavoriteMirror::TextureNames(*appearance));
    favorites->DeleteInstance(appearance->GetId());
    m->form.systemBrowser->UpdateLibrary(appearance, false);
    if (m->awaited == appearance)
        m->awaited.reset();
}

// One box for all of a selection, once it is through.
void CMaterialLibraryWidget::Private::complainOfRemoval(CMaterialLibraryWidget& dialog, const QString& complaint)
{
    if (failedRemovals.isEmpty())
        QMetaObject::invokeMethod(
            &dialog, [this, &dialog] { tellOfRemovals(dialog); }, Qt::QueuedConnection);
    failedRemovals.append(complaint);
}

void CMaterialLibraryWidget::Private::tellOfRemovals(CMaterialLibraryWidget& dialog)
{
    const QStringList failed = std::exchange(failedRemovals, {});
    MessageBoxes::Warn(&dialog, tr("提示"), tr("无法移除：") + '\n' + MessageBoxes::Lines(failed));
}

// In doubt it is used: by a favourite that was not read, or not brought yet.
bool CMaterialLibraryWidget::Private::isTextureUsed(const QSet<QString>& names, const QString& name) const
{
    return !areFavoritesLoaded() || !areFavoritesWhole || names.contains(name) ||
           CCloudService::Instance().GetDownloads().IsDocumentMissing();
}

// Another dialog may have begun anew with an empty library.
bool CMaterialLibraryWidget::Private::areFavoritesLoaded() const
{
    return loadedFavorites && loadedFavorites == manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
}

// The cloud has nothing of it any more: another dialog may still show it.
void CMaterialLibraryWidget::onRemoveAppearance(const QString& id)
{
    const auto favorites = m->manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    const auto favorite = favorites ? favorites->FindInstance(id.toLocal8Bit().toStdString()) : nullptr;
    if (!favorite || QFile::exists(m->mirror.Folders().document(id)))
        return;
    favorites->DeleteInstance(favorite->GetId());
    m->form.systemBrowser->UpdateLibrary(favorite, false);
}

// ---- the status timer

void CMaterialLibraryWidget::onTimerOut()
{
    if (!m->cloudEnabled)
        return;
    m->showAwaited();
    const QPointer<CMaterialLibraryWidget> alive(this);
    m->showCloudStatus(*this);
    if (!alive)
        return;
    m->synchronizeIfPending(*this);
    m->showSynchronization();
    m->takeArrivals();
    m->followVisibleRows();
    m->runRemovals();
    const CloudFolders folders = m->mirror.Folders();
    if (!folders.favorites.isEmpty() && !QDir(folders.records()).exists())
        QDir().mkpath(folders.records());
    CCloudService::Instance().PeriodicStep();
}

// Looked at on one tick only.
void CMaterialLibraryWidget::Private::showAwaited()
{
    if (!awaited)
        return;
    if (awaited == form.previewer->GetAppearance() && kiv::CMaterialHelper::CheckResourceComplete(awaited, manager))
        showAnew(awaited);
    awaited.reset();
}

void CMaterialLibraryWidget::Private::showCloudStatus(CMaterialLibraryWidget& dialog)
{
    form.synchronizeButton->setEnabled(loginCallback || IsLogin());
    if (!IsLogin() || CloudState::GetError() == CloudState::LoggedInElsewhere) {
        form.accountLabel->setText(QStringLiteral("离线"));
        if (isOnline && loginCallback && isBoxOpenOver(dialog))
            return;  // everything stays as it is, so that a later tick asks
        CloudState::TakeError();
        CloudState::TakeWarning();
        if (std::exchange(isOnline, false) && loginCallback)
            askForNewLogin(dialog);
    } else if (CloudState::GetWarning() == CloudState::TimedOut) {
        form.accountLabel->setText(QStringLiteral("超时"));
    } else {
        isOnline = NetworkStatusMonitor::Instance().IsOnline();
        form.accountLabel->setText(isOnline ? QStringLiteral("在线") : QStringLiteral("网络异常"));
    }
}

void CMaterialLibraryWidget::Private::askForNewLogin(CMaterialLibraryWidget& dialog)
{
    const QPointer<CMaterialLibraryWidget> alive(&dialog);
    const auto answer =
        MessageBoxes::Ask(&dialog, QMessageBox::Information, HintTitle,
                          QStringLiteral("当前账号在其他地方登录，是否重新登录？\n选择“否”将退出材质窗体"),
                          QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
    if (!alive)
        return;
    if (answer != QMessageBox::Yes) {
        dialog.close();
        return;
    }
    // Hosts prepare for a login when they are asked; the user's word stands whatever they answer.
    loginCallback->IsLoginEnabled();
    dialog.SetLogin();
}

// How the last synchronisation ended can be read from the account's label when nothing waits any more.
void CMaterialLibraryWidget::Private::showSynchronization() const
{
    const CSynchronizationStatus::Counts counts = CCloudService::Instance().GetStatus().Get();
    const bool isIdle = counts.waiting == 0;
    // Hidden, since what a label had shown stays on the screen when a layout takes away all its width.
    form.synchronizationLabel->setVisible(!isIdle);
    form.synchronizationLabel->setText(isIdle ? QString() : countsText(counts));
    form.accountLabel->setToolTip(isIdle && counts.succeeded + counts.failed > 0 ? countsText(counts) : QString());
}

// Favourites that came before those of the disk were read would be taken for new ones.
void CMaterialLibraryWidget::Private::takeArrivals()
{
    if (!areFavoritesLoaded())
        return;
    const CFavoriteMirror::Arrivals arrivals = mirror.TakeArrivals();
    if (arrivals.isAnyNew)
        form.systemBrowser->UpdateFavoriteLibrary(manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME));
    for (const auto& appearance : arrivals.pictured) {
        form.systemBrowser->SetTableWidgetIcon(appearance);
        if (appearance == form.previewer->GetAppearance())
            awaited = appearance;
    }
}

void CMaterialLibraryWidget::Private::runRemovals() const
{
    CCloudService& cloud = CCloudService::Instance();
    if (!areFavoritesLoaded() || !IsLogin() || !cloud.HasRemovals() || !mirror.IsUpToDate())
        return;
    const QSet<QString> used = mirror.UsedTextures();
    cloud.RunRemoval([this, &used](const QString& name) { return isTextureUsed(used, name); });
}

void CMaterialLibraryWidget::Private::followVisibleRows() const
{
    QTableWidget* table = form.systemBrowser->GetTableWidget();
    const int end = table->rowAt(table->height());
    const int last = end < 0 ? table->rowCount() - 1 : end;
    bool isChanged = false;
    for (int row = qMax(0, table->rowAt(0)); row <= last; ++row) {
        const auto appearance = appearanceAt(*form.systemBrowser, row);
        const QTableWidgetItem* item = table->item(row, PictureColumn);
        if (!appearance || !appearance->GetCloudFlag() || !item)
            continue;
        mirror.RequestTextures(*appearance);
        if (!item->data(CloudRole).toBool())
            isChanged = form.systemBrowser->ModifyTableWidgetItemCloud(appearance) || isChanged;
    }
    if (isChanged)
        table->viewport()->update();
}

bool CMaterialLibraryWidget::Private::needsCloud(const kiv::CAppearanceInstancePtr& appearance) const
{
    const bool isReachable = IsLogin() && NetworkStatusMonitor::Instance().IsOnline();
    return cloudEnabled && !isReachable && !kiv::CMaterialHelper::CheckResourceComplete(appearance, manager);
}

// ---- the favourite-load timer

// One tick calls this as often as the dialog was shown, but loads once.
void CMaterialLibraryWidget::onJsonTimerOut()
{
    if (sender() == &m->favoriteLoadTimer && !m->favoriteLoadTimer.isActive())
        return;
    m->favoriteLoadTimer.stop();
    if (m->manager.GetFavoriteLibraryPath().empty()) {
        const QPointer<CMaterialLibraryWidget> alive(this);
        MessageBoxes::Ask(this, QMessageBox::Critical, tr("严重错误"), tr("系统文件夹不完整,收藏功能不可用！"),
                          QMessageBox::Ok, QMessageBox::Ok);
        if (alive)
            close();
    } else if (m->cloudEnabled) {
        LoadApperanceLibrary(m->manager.GetFavoriteLibraryPath(), FAVORITE_LIBRARY_NAME);
    }
}

// The records of what the cloud has went as the dialog was made; a session that was open by then brings them back.
void CMaterialLibraryWidget::LoadApperanceLibrary(const std::wstring& root, const std::string& libraryName)
{
    auto library = m->manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    if (!library)
        library = AddFavoriteLibrary(m->manager);
    const QString folder = kiv::system::JoinPath(root, GStdStringTrans::StringToWString(libraryName));
    const QPointer<CMaterialLibraryWidget> alive(this);
    CFavoriteLibraryLoader loader(m->manager, *this);
    const bool isWhole = loader.Load(folder, *library);
    if (!alive)
        return;
    m->form.ShowNotice(loader.GetNotice(), loader.GetNoticeDetails());
    m->form.systemBrowser->UpdateFavoriteLibrary(library);
    CDialogState(m->manager, *this, m->form).RestoreFavorites();
    m->mirror.Restart();
    m->mirror.SetFiles(loader.GetFiles());
    m->loadedFavorites = library;
    m->areFavoritesWhole = isWhole;
    if (m->cloudEnabled && IsLogin()) {
        LoadSysLibMaterialIndex();
        LoadFavLibMaterialJson();
    }
}
