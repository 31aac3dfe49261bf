// What a person does to the materials of the project: copying, deleting, changing the type, renaming, bringing in and
// sending out as files.

#include "AppearanceExchange.h"
#include "MaterialLibraryWidgetPrivate.h"

#include <AppearanceDynamicEditor.h>
#include <AppearanceLibraryBrowserCtrl.h>
#include <AppearancePreviewerCtrl.h>
#include <MaterialConstants.h>

#include <kiv/AppearanceSerializer.h>

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QScrollArea>
#include <QTableWidget>

#include <algorithm>

using kiv::CAppearanceInstancePtr;
using Appearances = CAppearanceLibraryBrowserCtrl::Appearances;

namespace {

constexpr int ComplaintsShown = 10;  // what a message box has room for

// The widget that edits a material's name, where hosts allow that.
const QString NameControl = QStringLiteral("name");

QString shorten(const QStringList& complaints)
{
    QStringList shown = complaints.mid(0, ComplaintsShown);
    if (complaints.size() > ComplaintsShown)
        shown.append(QStringLiteral("……"));
    return shown.join('\n');
}

bool isLost(const CAppearanceInstancePtr& appearance)
{
    return appearance->GetEditType() == 0 || appearance->GetEditType() == 2;
}

}  // namespace

// ---- what the browsers ask for

void CMaterialLibraryWidget::OnCopyandAddApperance(const CAppearanceInstancePtr& appearance)
{
    CopyandAddAppearanceFunc(appearance);
}

void CMaterialLibraryWidget::OnDeleteApperance(CAppearanceInstancePtr& appearance)
{
    AppearanceDeletedFunc(appearance);
}

void CMaterialLibraryWidget::OnDownloadAppearance(const QString& id)
{
    AppearanceDownloadFunc(id);
}

void CMaterialLibraryWidget::AppearanceDownloadFunc(const QString&)
{
}

// ---- copying and deleting

CAppearanceInstancePtr CMaterialLibraryWidget::CopyandAddAppearanceFunc(const CAppearanceInstancePtr& appearance)
{
    if (!appearance || !m->hasProject(*this))
        return {};
    const CAppearanceInstancePtr copy = m->library.CopyMaterial(appearance, NewMaterialId());
    if (!copy || !m->moveIntoProject(copy))
        return {};
    OnTransformEditedData(m->record(*copy, kiv::EditedMaterialAdded));
    m->showInProject(copy, true);
    m->form.projectBrowser->SelectAppearance(copy);
    return copy;
}

void CMaterialLibraryWidget::AppearanceDeletedFunc(const CAppearanceInstancePtr& appearance)
{
    const auto project = m->projectLibrary();
    if (!appearance || !project || project->FindInstance(appearance->GetId()) != appearance)
        return;
    if (!isLost(appearance))
        OnTransformEditedData(m->record(*appearance, kiv::EditedMaterialDeleted));
    project->DeleteInstance(appearance->GetId());
    m->showInProject(appearance, false);
    m->followLibrary();
}

// The model keeps copies in its own library; a project may have another one.
bool CMaterialLibraryWidget::Private::moveIntoProject(const CAppearanceInstancePtr& copy) const
{
    if (projectLibraryName == CUSTOMER_LIBRARY_NAME)
        return true;
    if (const auto customer = manager.FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME))
        customer->DeleteInstance(copy->GetId());
    return projectLibrary()->AddInstance(copy);
}

// The whole browser only when the host put another library in the place of the one shown.
void CMaterialLibraryWidget::Private::showInProject(const CAppearanceInstancePtr& appearance, bool isThere) const
{
    const auto project = projectLibrary();
    if (form.projectBrowser->GetCurrentLibrary() == project)
        form.projectBrowser->UpdateLibrary(appearance, isThere);
    else
        form.projectBrowser->UpdateLibrary(project);
}

kiv::String CMaterialLibraryWidget::Private::record(const kiv::CAppearanceInstance& appearance, int kind,
                                                    const kiv::String& key) const
{
    kiv::CAppearanceSerializer serializer(manager);
    serializer.SetAppearanceLibrary(projectLibrary());
    return serializer.SerializeEditedMaterialData(appearance.GetId(), kind, key);
}

bool CMaterialLibraryWidget::Private::hasProject(CMaterialLibraryWidget& dialog) const
{
    if (projectLibrary())
        return true;
    QMessageBox::warning(&dialog, tr("提示"), tr("项目的材质库已不存在，操作无法完成。"));
    return false;
}

// ---- type and name

void CMaterialLibraryWidget::OnAppearanceTypeChanged(CAppearanceInstancePtr& appearance, const kiv::String& typeName)
{
    const auto project = m->projectLibrary();
    if (!appearance || appearance->GetCategory() == typeName || !project ||
        project->FindInstance(appearance->GetId()) != appearance)
        return;
    const CAppearanceInstancePtr changed = appearance;  // the reference may be to something that goes meanwhile
    const CAppearanceInstancePtr fresh = m->library.CreateMaterial(typeName, {});
    if (!fresh) {
        QMessageBox::warning(this, tr("提示"), tr("材质库中没有此类型，无法转换。"));
        return;
    }
    OnTransformEditedData(m->record(*changed, kiv::EditedMaterialChanged, "template"));
    Private::changeType(*changed, *fresh, typeName);
    project->DeleteInstance(changed->GetId());
    project->AddInstance(changed);
    m->showInProject(changed, true);
    m->showAnew(changed);
    const QPointer<CMaterialLibraryWidget> alive(this);
    m->form.projectBrowser->SelectAppearance(changed);
    if (alive)
        emit AppearanceEdited(changed);
}

// Metal that was something else before would look like plastic.
void CMaterialLibraryWidget::Private::changeType(kiv::CAppearanceInstance& appearance, kiv::CAppearanceInstance& fresh,
                                                 const kiv::String& typeName)
{
    fresh.IncompleteAssign(appearance, false, false);
    appearance.IncompleteAssign(fresh, true, true);
    appearance.SetCategory(typeName);
    if (typeName == APPEARANCE_TYPE_METAL) {
        appearance.SetProperty(APPEARANCE_METALLIC, kiv::MakePropertyValue(1.0F));
        appearance.SetProperty(APPEARANCE_USE_ENVIRONMENT_MAP, kiv::MakePropertyValue(true));
    }
}

void CMaterialLibraryWidget::OnRenameAppearance(const CAppearanceInstancePtr& appearance)
{
    if (!appearance || appearance->GetEditType() < 1)
        return;
    if (m->form.editor->GetAppearance() != appearance)
        m->show(appearance);
    auto* name = m->form.editor->findChild<QLineEdit*>(NameControl);
    if (!name)
        return;
    m->renamedFrom = focusWidget();
    m->form.editorArea->ensureWidgetVisible(name);
    name->setFocus(Qt::ShortcutFocusReason);
    name->selectAll();
}

// ---- files

void CMaterialLibraryWidget::OnExportAppearances(const Appearances& appearances)
{
    CAppearanceExchange exchange(m->library, *this);
    const QPointer<CMaterialLibraryWidget> alive(this);
    if (appearances.size() == 1) {
        const CAppearanceInstancePtr appearance = appearances.front();
        const QString path = m->askForArchive(*this, exchange.FileName(*appearance));
        if (alive && !path.isEmpty())
            exchange.Write(appearance, path);
    } else if (!appearances.empty()) {
        const Appearances kept = appearances;
        const QString folder = QFileDialog::getExistingDirectory(this, tr("导出材质"), m->exchangeFolder);
        if (alive && !folder.isEmpty()) {
            m->exchangeFolder = folder;
            exchange.WriteAll(kept, folder);
        }
    }
    if (alive && !exchange.Complaints().isEmpty())
        QMessageBox::warning(this, tr("提示"), tr("导出时出现问题：") + '\n' + shorten(exchange.Complaints()));
}

QString CMaterialLibraryWidget::Private::askForArchive(CMaterialLibraryWidget& dialog, const QString& name)
{
    QFileDialog files(&dialog, tr("导出材质"), exchangeFolder, tr("材质归档 (*.ggm)"));
    files.setAcceptMode(QFileDialog::AcceptSave);
    files.setDefaultSuffix(QStringLiteral("ggm"));
    files.selectFile(name + QStringLiteral(".ggm"));
    const QPointer<CMaterialLibraryWidget> alive(&dialog);
    if (files.exec() != QDialog::Accepted || !alive)
        return {};
    exchangeFolder = files.directory().path();
    return files.selectedFiles().value(0);
}

void CMaterialLibraryWidget::OnImportAppearances(const QStringList& files)
{
    if (!m->hasProject(*this))
        return;
    const QPointer<CMaterialLibraryWidget> alive(this);
    const QStringList chosen = files.isEmpty() ? QFileDialog::getOpenFileNames(this, tr("导入材质"), m->exchangeFolder,
                                                                               tr("材质 (*.ggm *.json)"))
                                               : files;
    if (!alive || chosen.isEmpty())
        return;
    m->exchangeFolder = QFileInfo(chosen.first()).path();
    CAppearanceExchange exchange(m->library, *this);
    const Appearances imported = exchange.Read(chosen, *m->projectLibrary());
    if (alive && m->projectLibrary())
        addImported(imported);
    if (alive && !exchange.Complaints().isEmpty())
        QMessageBox::warning(this, tr("提示"), tr("以下文件未能导入：") + '\n' + shorten(exchange.Complaints()));
}

// Selecting comes last: whoever hears of it may do anything to the dialog.
void CMaterialLibraryWidget::addImported(const Appearances& appearances)
{
    const auto project = m->projectLibrary();
    const bool isMany = appearances.size() > 1;
    for (const CAppearanceInstancePtr& appearance : appearances) {
        project->AddInstance(appearance);
        OnTransformEditedData(m->record(*appearance, kiv::EditedMaterialAdded));
        if (!isMany)
            m->showInProject(appearance, true);
    }
    if (isMany)
        m->form.projectBrowser->UpdateLibrary(project);
    if (!appearances.empty())
        m->form.projectBrowser->SelectAppearance(appearances.back());
}

// ---- questions

void CMaterialLibraryWidget::Private::connectOperations(CMaterialLibraryWidget& dialog)
{
    for (CAppearanceLibraryBrowserCtrl* browser : {form.projectBrowser, form.systemBrowser}) {
        connect(browser, SIGNAL(OnCopyandAddApperance(const kiv::CAppearanceInstancePtr&)), &dialog,
                SLOT(OnCopyandAddApperance(const kiv::CAppearanceInstancePtr&)));
        connect(browser, SIGNAL(OnApplyAppearance(const kiv::CAppearanceInstancePtr&)), &dialog, SLOT(OnApply()));
        connect(browser, SIGNAL(OnExportAppearances(const CAppearanceLibraryBrowserCtrl::Appearances&)), &dialog,
                SLOT(OnExportAppearances(const CAppearanceLibraryBrowserCtrl::Appearances&)));
    }
    connect(form.projectBrowser, SIGNAL(OnDeleteApperance(kiv::CAppearanceInstancePtr&)), &dialog,
            SLOT(OnDeleteApperance(kiv::CAppearanceInstancePtr&)));
    connect(form.projectBrowser, SIGNAL(OnAppearanceTypeChanged(kiv::CAppearanceInstancePtr&, const kiv::String&)),
            &dialog, SLOT(OnAppearanceTypeChanged(kiv::CAppearanceInstancePtr&, const kiv::String&)));
    connect(form.projectBrowser, SIGNAL(OnRenameAppearance(const kiv::CAppearanceInstancePtr&)), &dialog,
            SLOT(OnRenameAppearance(const kiv::CAppearanceInstancePtr&)));
    connect(form.projectBrowser, SIGNAL(OnImportAppearances(const QStringList&)), &dialog,
            SLOT(OnImportAppearances(const QStringList&)));
    connect(form.systemBrowser, SIGNAL(OnDownloadAppearance(const QString&)), &dialog,
            SLOT(OnDownloadAppearance(const QString&)));
    form.projectBrowser->ShowImport(true);
    form.projectBrowser->SetDeleteConfirmation(
        [&dialog](const Appearances& appearances) { return dialog.confirmDeletion(appearances); });
    form.systemBrowser->SetRemoveConfirmation(
        [&dialog](const Appearances& appearances) { return dialog.confirmRemoval(appearances); });
}

bool CMaterialLibraryWidget::confirmDeletion(const Appearances& appearances)
{
    int uses = 0;
    for (const CAppearanceInstancePtr& appearance : appearances)
        uses += CountAppearanceUses(appearance);
    QStringList reasons;
    if (uses > 0)
        reasons.append(tr("有 %n 个构件正在使用此材质。", nullptr, uses));
    if (std::any_of(appearances.begin(), appearances.end(), isLost))
        reasons.append(tr("删除后无法撤销。"));
    return reasons.isEmpty() || m->ask(*this, reasons.join('\n') + '\n' + tr("确定要删除吗？"));
}

bool CMaterialLibraryWidget::confirmRemoval(const Appearances& appearances)
{
    return m->ask(*this,
                  tr("确定要从我的材质中移除这 %n 个材质吗？移除后无法撤销。", nullptr, int(appearances.size())));
}

bool CMaterialLibraryWidget::Private::ask(CMaterialLibraryWidget& dialog, const QString& question) const
{
    const QPointer<CMaterialLibraryWidget> alive(&dialog);
    const auto answer =
        QMessageBox::question(&dialog, tr("提示"), question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    return alive && answer == QMessageBox::Yes;
}
