// What a person does to the materials of the project: copying, deleting, changing the type, renaming, bringing in and
// sending out as files.

#include "AppearanceExchange.h"
#include "MaterialLibraryWidgetPrivate.h"

#include <AppearanceDynamicEditor.h>
#include <AppearanceLibraryBrowserCtrl.h>
#include <AppearancePreviewerCtrl.h>
#include <MaterialConstants.h>
#include <MessageBoxes.h>

#include <kiv/AppearanceSerializer.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPointer>
#include <QScrollArea>
#include <QTableWidget>

#include <algorithm>
#include <utility>

using kiv::CAppearanceInstancePtr;
using Appearances = CAppearanceLibraryBrowserCtrl::Appearances;

namespace {

// The widget that edits a material's name, where hosts allow that.
const QString NameControl = QStringLiteral("name");

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
    MessageBoxes::Warn(&dialog, tr("提示"), tr("项目的材质库已不存在，操作无法完成。"));
    return false;
}

// ---- type and name

void CMaterialLibraryWidget::OnAppearanceTypeChanged(CAppearanceInstancePtr& appearance, const kiv::String& typeName)
{
    const auto project = m->projectLibrary();
    if (!m->hasProject(*this) || !appearance || appearance->GetCategory() == typeName || !project)
        return;
    const CAppearanceInstancePtr changed = project->FindInstance(appearance->GetId());
    if (changed != appearance)
        return;
    const CAppearanceInstancePtr fresh = m->library.CreateMaterial(typeName, {});
    if (!fresh) {
        MessageBoxes::Warn(this, tr("提示"), tr("材质库中没有此类型，无法转换。"));
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
    QLineEdit* name = m->nameLine();
    if (!name)
        return;
    m->renaming = {name, name->text(), focusWidget()};
    m->form.editorArea->ensureWidgetVisible(name);
    name->setFocus(Qt::ShortcutFocusReason);
    name->selectAll();
}

// Controls of the appearance before may still be there; the last ones are those of this one.
QLineEdit* CMaterialLibraryWidget::Private::nameLine() const
{
    const QList<QLineEdit*> lines = form.editor->findChildren<QLineEdit*>(NameControl);
    return lines.isEmpty() ? nullptr : lines.last();
}

// The line itself cannot take back what was typed: each letter was an edit.
void CMaterialLibraryWidget::Private::endRenaming(bool isKept)
{
    const Renaming ended = std::exchange(renaming, {});
    if (!isKept && ended.line)
        ended.line->setText(ended.before);
    if (ended.from)
        ended.from->setFocus(Qt::OtherFocusReason);
}

// ---- files

void CMaterialLibraryWidget::OnExportAppearances(const Appearances& appearances)
{
    if (appearances.empty())
        return;
    const Appearances exported(appearances.begin(),
                               appearances.end());  // the browser's own may go while files are asked for
    const QPointer<CMaterialLibraryWidget> alive(this);
    CAppearanceExchange exchange(m->library, *this);
    if (exported.size() == 1) {
        const QString path = m->askForArchive(*this, exchange.FileName(*exported.front()));
        if (!path.isEmpty())
            exchange.Write(exported.front(), path);
    } else {
        const QString folder = m->askForFolder(*this);
        if (!folder.isEmpty())
            exchange.WriteAll(exported, folder);
    }
    if (alive && !exchange.Complaints().isEmpty())
        MessageBoxes::Warn(this, tr("提示"),
                           tr("导出时出现问题：") + '\n' + MessageBoxes::Lines(exchange.Complaints()));
}

QString CMaterialLibraryWidget::Private::askForArchive(CMaterialLibraryWidget& dialog, const QString& name)
{
    auto* files = new QFileDialog(&dialog, tr("导出材质"), exchangeFolder, tr("材质归档 (*.ggm)"));
    files->setAcceptMode(QFileDialog::AcceptSave);
    files->setDefaultSuffix(QStringLiteral("ggm"));
    files->selectFile(name + QStringLiteral(".ggm"));
    return askForFiles(dialog, files).value(0);
}

QString CMaterialLibraryWidget::Private::askForFolder(CMaterialLibraryWidget& dialog)
{
    auto* files = new QFileDialog(&dialog, tr("导出材质"), exchangeFolder);
    files->setFileMode(QFileDialog::Directory);
    files->setOption(QFileDialog::ShowDirsOnly);
    const QString folder = askForFiles(dialog, files).value(0);
    if (!folder.isEmpty())
        exchangeFolder = folder;
    return folder;
}

// None when the opening of the dialog has ended meanwhile, or the dialog itself is gone.
QStringList CMaterialLibraryWidget::Private::askForFiles(CMaterialLibraryWidget& dialog, QFileDialog* files)
{
    const unsigned opening = openings;
    const QPointer<CMaterialLibraryWidget> alive(&dialog);
    const QPointer<QFileDialog> owned(files);
    const bool isChosen = files->exec() == QDialog::Accepted;
    const QStringList chosen = isChosen && owned ? owned->selectedFiles() : QStringList();
    delete owned;
    if (!alive || opening != openings || chosen.isEmpty())
        return {};
    exchangeFolder = QFileInfo(chosen.first()).path();
    return chosen;
}

void CMaterialLibraryWidget::OnImportAppearances(const QStringList& files)
{
    if (!m->hasProject(*this))
        return;
    const QPointer<CMaterialLibraryWidget> alive(this);
    QStringList chosen = files;
    if (chosen.isEmpty()) {
        auto* dialog = new QFileDialog(this, tr("导入材质"), m->exchangeFolder, tr("材质 (*.ggm *.json)"));
        dialog->setFileMode(QFileDialog::ExistingFiles);
        chosen = m->askForFiles(*this, dialog);
    }
    const auto project = alive && !chosen.isEmpty() && m->hasProject(*this) ? m->projectLibrary() : nullptr;
    if (!project)
        return;
    const unsigned opening = m->openings;
    CAppearanceExchange exchange(m->library, *this);
    const Appearances imported = exchange.Read(chosen, *project);
    if (!alive || opening != m->openings)
        return;
    addImported(imported);
    if (alive && !exchange.Complaints().isEmpty())
        MessageBoxes::Warn(this, tr("提示"),
                           tr("以下文件未能导入：") + '\n' + MessageBoxes::Lines(exchange.Complaints()));
}

// Selecting comes last: whoever hears of it may do anything to the dialog.
void CMaterialLibraryWidget::addImported(const Appearances& appearances)
{
    const auto project = m->projectLibrary();
    CAppearanceInstancePtr last;
    for (const CAppearanceInstancePtr& appearance : appearances) {
        // The host may have changed the library while the files were read.
        if (!project || !project->AddInstance(appearance))
            continue;
        OnTransformEditedData(m->record(*appearance, kiv::EditedMaterialAdded));
        last = appearance;
    }
    if (!last)
        return;
    if (appearances.size() == 1)
        m->showInProject(last, true);
    else
        m->form.projectBrowser->UpdateLibrary(project);
    m->form.projectBrowser->SelectAppearance(last);
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
    if (!m->hasProject(*this))
        return false;
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
    return MessageBoxes::Ask(&dialog, QMessageBox::Question, tr("提示"), question, QMessageBox::Yes | QMessageBox::No,
                             QMessageBox::No) == QMessageBox::Yes;
}
