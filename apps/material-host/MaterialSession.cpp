#include "MaterialSession.h"

#include "HostMaterialDialog.h"

#include <AppearanceLibraryBrowserCtrl.h>

#include <QScreen>

MaterialSession::MaterialSession(kiv::CMaterialLibrary& library, const QString& elementId,
                                 const kiv::CAppearanceInstancePtr& material, CloudAccount& account, bool translate,
                                 QWidget* window)
    : QObject(window), m_elementId(elementId), m_dialog(new HostMaterialDialog(library, account, translate, window))
{
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    // Before the reactor is set: showing what the element has is no choice of the user.
    selectInDialog(material);
    m_dialog->SetApplyAppearanceReactor([this](const kiv::CAppearanceInstancePtr& chosen) {
        m_shown = chosen;
        emit shown(m_elementId, chosen);
    });
    connect(m_dialog, SIGNAL(MatApply(QString&)), this, SLOT(onMatApply(QString&)));
    connect(m_dialog, SIGNAL(AppearanceEdited(const kiv::CAppearanceInstancePtr&)), this,
            SIGNAL(edited(const kiv::CAppearanceInstancePtr&)));
    connect(m_dialog, SIGNAL(finished(int)), this, SLOT(onFinished(int)));
}

MaterialSession::~MaterialSession() = default;

void MaterialSession::selectInDialog(const kiv::CAppearanceInstancePtr& material)
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
    m_dialog->open();
    placeBeside(keepVisible);
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

void MaterialSession::onMatApply(QString&)
{
    m_applied = true;
}

void MaterialSession::onFinished(int)
{
    if (m_applied && m_shown)
        emit kept(m_elementId, m_shown);
    else
        emit putBack(m_elementId);
    emit closed();
    deleteLater();
}
