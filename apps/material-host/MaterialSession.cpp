#include "MaterialSession.h"

#include "HostMaterialDialog.h"

#include <AppearanceLibraryBrowserCtrl.h>

#include <QEvent>
#include <QScreen>
#include <QTableWidget>
#include <QTreeWidget>

#include <utility>

using kiv::CAppearanceInstancePtr;

MaterialSession::MaterialSession(kiv::CMaterialLibrary& library, ProjectDocument& document, const QString& elementId,
                                 CloudAccount& account, bool translate, QWidget* window)
    : QObject(window), m_document(document), m_elementId(elementId),
      m_dialog(new HostMaterialDialog(
          library, account, [this](const CAppearanceInstancePtr& material) { return usesOf(material); }, translate,
          window)),
      m_before(document.assignments())
{
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    // Before the reactor is set: showing what the element has is no choice of the user.
    selectInDialog(document.materialOf(elementId));
    connectDialog();
}

MaterialSession::~MaterialSession() = default;

void MaterialSession::connectDialog()
{
    m_dialog->SetApplyAppearanceReactor([this](const CAppearanceInstancePtr& chosen) { choose(chosen); });
    connect(m_dialog, SIGNAL(MatApply(QString&)), this, SLOT(onMatApply(QString&)));
    connect(m_dialog, SIGNAL(AppearanceEdited(const kiv::CAppearanceInstancePtr&)), this,
            SLOT(onEdited(const kiv::CAppearanceInstancePtr&)));
    connect(m_dialog, SIGNAL(deleted(const kiv::CAppearanceInstancePtr&)), this,
            SLOT(onDeleted(const kiv::CAppearanceInstancePtr&)));
    connect(m_dialog, SIGNAL(finished(int)), this, SLOT(onFinished(int)));
    for (const auto* browser : m_dialog->findChildren<CAppearanceLibraryBrowserCtrl*>()) {
        browser->GetTableWidget()->viewport()->installEventFilter(this);
        browser->GetTreeWidget()->viewport()->installEventFilter(this);
    }
}

void MaterialSession::selectInDialog(const CAppearanceInstancePtr& material)
{
    if (!material)
        return;
    m_dialog->SetCurrentMaterial(QString::fromLocal8Bit(material->GetId().c_str()).toStdWString());
    auto* system = m_dialog->findChild<CAppearanceLibraryBrowserCtrl*>("SystemLibrary");
    if (system && system->GetCurrentLibrary() &&
        system->GetCurrentLibrary()->FindInstance(material->GetId()) == material)
        system->SelectAppearance(material);
}

void MaterialSession::open(const QRect& keepVisible)
{
    m_dialog->show();
    placeBeside(keepVisible);
    bringToFront();
}

void MaterialSession::bringToFront()
{
    if (!m_dialog)
        return;
    m_dialog->raise();
    m_dialog->activateWindow();
}

void MaterialSession::cancel()
{
    if (m_dialog)
        m_dialog->reject();
}

/// To the right of what should stay visible, or to the left when that hides less of it.
void MaterialSession::placeBeside(const QRect& keepVisible)
{
    const QRect screen = m_dialog->parentWidget()->screen()->availableGeometry();
    const QSize frame = m_dialog->frameSize();
    const int top = screen.top() + (screen.height() - frame.height()) / 2;
    const QRect right(QPoint(screen.right() - frame.width() - 12, top), frame);
    const QRect left(QPoint(screen.left() + 12, top), frame);
    const auto hidden = [&](const QRect& place) {
        const QRect common = place.intersected(keepVisible);
        return common.width() * common.height();
    };
    m_dialog->move(hidden(left) < hidden(right) ? left.topLeft() : right.topLeft());
}

// ---- what is shown

void MaterialSession::choose(const CAppearanceInstancePtr& material)
{
    m_dropped.remove(m_elementId);
    show(m_elementId, material);
}

// Pressing a row to drag it elsewhere selects it, which is no choice for the session's element.
void MaterialSession::drop(const QString& elementId, const CAppearanceInstancePtr& material, const QObject* source)
{
    const auto* widget = qobject_cast<const QWidget*>(source);
    if (elementId != m_elementId && widget && m_dialog && m_dialog->isAncestorOf(widget))
        show(m_elementId, m_beforePress);
    m_dropped.insert(elementId);
    show(elementId, material);
}

bool MaterialSession::eventFilter(QObject* /*watched*/, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress)
        m_beforePress = shownOn(m_elementId);
    return false;
}

void MaterialSession::show(const QString& elementId, const CAppearanceInstancePtr& material)
{
    if (material)
        m_shown.insert(elementId, material);
    else
        m_shown.remove(elementId);
    if (m_document.isInProjectLibrary(material))
        m_ofProject.insert(material->GetId());
    emit shown(elementId);
}

// ---- what happens to materials

void MaterialSession::onEdited(const CAppearanceInstancePtr& material)
{
    m_document.relink(material);
    for (CAppearanceInstancePtr& onElement : m_shown)
        onElement = m_document.current(onElement);
    if (m_document.isInProjectLibrary(material))
        m_deleted.erase(material->GetId());
    takeBackVanished();
    emit edited(material);
}

// Whoever deletes a copy has looked at it, and does not want it on the element for that.
void MaterialSession::onDeleted(const CAppearanceInstancePtr& material)
{
    if (m_document.isInProjectLibrary(material))
        return;
    m_deleted.insert(material->GetId());
    if (shownOn(m_elementId) == material && !m_dropped.contains(m_elementId))
        show(m_elementId, nullptr);
    emit edited(material);
}

// The project had it and nobody deleted it: the copying or the import was taken back.
void MaterialSession::takeBackVanished()
{
    const auto shown = m_shown;
    for (auto it = shown.begin(); it != shown.end(); ++it) {
        const kiv::String id = it.value()->GetId();
        if (m_ofProject.count(id) && !m_deleted.count(id) && !m_document.isInProjectLibrary(it.value()))
            show(it.key(), nullptr);
    }
}

// What is only looked at on the session's element is not in use there: it is so with everything that one selects.
int MaterialSession::usesOf(const CAppearanceInstancePtr& material) const
{
    int uses = 0;
    for (const BuildingElement& element : m_document.building().elements) {
        const bool isTried = element.id == m_elementId && !m_dropped.contains(element.id);
        const CAppearanceInstancePtr shown = isTried ? nullptr : shownOn(element.id);
        uses += (shown ? shown : m_document.materialOf(element.id)) == material ? 1 : 0;
    }
    return uses;
}

// ---- the end

void MaterialSession::onMatApply(QString&)
{
    m_applied = true;
}

void MaterialSession::onFinished(int)
{
    takeBackVanished();
    const auto shown = std::exchange(m_shown, {});
    if (m_applied)
        m_document.assign(shown);
    else
        m_document.restore(m_before);
    emit closed();
    deleteLater();
}
