#pragma once

#include "ProjectDocument.h"

#include <QPointer>
#include <QString>

class CloudAccount;
class HostMaterialDialog;

/// One opening of the material dialog for one element, from the moment it shows the element's material to the moment
/// the host keeps another or puts the old one back.
///
/// What the user saw is what is kept. The dialog hands every selection to the reactor, from the project's library as
/// from the system's, and the host draws it; the id that MatApply brings, however, is the one selected in the project's
/// browser, and says nothing of a selection in the other. So the session remembers what the reactor was given last, and
/// "确定" keeps exactly that. When nothing was selected, nothing changes.
class MaterialSession : public QObject {
    Q_OBJECT

public:
    /// Opens the dialog over `window`, beside the rectangle (of the screen) that should stay visible.
    /// `translate`: the dialog loads its Chinese texts.
    MaterialSession(kiv::CMaterialLibrary& library, const QString& elementId,
                    const kiv::CAppearanceInstancePtr& material, CloudAccount& account, bool translate,
                    QWidget* window);
    ~MaterialSession() override;

    void open(const QRect& keepVisible);
    const QString& elementId() const { return m_elementId; }

signals:
    /// The user selected a material: draw the element with it.
    void shown(const QString& elementId, const kiv::CAppearanceInstancePtr& material);
    /// A material of the project was edited, or an edit was taken back: draw anew what has it.
    void edited(const kiv::CAppearanceInstancePtr& material);
    void kept(const QString& elementId, const kiv::CAppearanceInstancePtr& material);
    void putBack(const QString& elementId);
    /// The dialog has closed, after kept() or putBack().
    void closed();

private slots:
    void onMatApply(QString& id);
    void onFinished(int result);

private:
    void selectInDialog(const kiv::CAppearanceInstancePtr& material);
    void placeBeside(const QRect& keepVisible);

    QString m_elementId;
    QPointer<HostMaterialDialog> m_dialog;
    kiv::CAppearanceInstancePtr m_shown;
    bool m_applied = false;
};
