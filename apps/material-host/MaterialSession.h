#pragma once

#include "ProjectDocument.h"

#include <QPointer>
#include <QSet>

#include <set>

class CloudAccount;
class HostMaterialDialog;

/// One opening of the material dialog for one element, from the moment it shows the element's material to the moment
/// the host keeps another or puts the old one back. Further elements join when materials are dropped on them.
///
/// What the user saw is what is kept. The dialog hands every selection to the reactor, from the project's library as
/// from the system's, and the host draws it; the id that MatApply brings, however, is the one selected in the project's
/// browser, and says nothing of a selection in the other. So the session remembers what the reactor was given last, and
/// "确定" keeps exactly that. When nothing was selected, nothing changes.
///
/// A material that was deleted stays on the elements that have it. When it comes back it is another object of the same
/// id, to which they are linked again; a copy that is taken back leaves the elements on which it was tried.
class MaterialSession : public QObject {
    Q_OBJECT

public:
    /// Library, document and account are borrowed. `translate`: the dialog loads its Chinese texts.
    MaterialSession(kiv::CMaterialLibrary& library, ProjectDocument& document, const QString& elementId,
                    CloudAccount& account, bool translate, QWidget* window);
    ~MaterialSession() override;

    /// Shows the dialog beside the rectangle (of the screen) that should stay visible. It does not block the window:
    /// that has to take what is dragged there.
    void open(const QRect& keepVisible);
    void bringToFront();
    /// Closes the dialog as its user would who changed his mind.
    void cancel();

    /// What the element is to be drawn with; null for what it has.
    kiv::CAppearanceInstancePtr shownOn(const QString& elementId) const { return m_shown.value(elementId); }
    /// Shows the material on an element onto which it was dragged from `source` (null: another program).
    void drop(const QString& elementId, const kiv::CAppearanceInstancePtr& material, const QObject* source);

signals:
    /// The element is to be drawn anew.
    void shown(const QString& elementId);
    /// A material of the project was edited, deleted or has come back: draw anew what has it.
    void edited(const kiv::CAppearanceInstancePtr& material);
    /// The dialog has closed, and what it showed was kept or put back.
    void closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void onMatApply(QString& id);
    void onEdited(const kiv::CAppearanceInstancePtr& material);
    void onDeleted(const kiv::CAppearanceInstancePtr& material);
    void onFinished(int result);

private:
    void connectDialog();
    void selectInDialog(const kiv::CAppearanceInstancePtr& material);
    void placeBeside(const QRect& keepVisible);
    void choose(const kiv::CAppearanceInstancePtr& material);
    void show(const QString& elementId, const kiv::CAppearanceInstancePtr& material);
    void takeBackVanished();
    int usesOf(const kiv::CAppearanceInstancePtr& material) const;

    ProjectDocument& m_document;
    QString m_elementId;
    QPointer<HostMaterialDialog> m_dialog;
    ProjectDocument::Assignments m_before;      // when the dialog was opened
    ProjectDocument::Assignments m_shown;       // instead of what the elements have
    QSet<QString> m_dropped;                    // elements whose material was dragged there
    kiv::CAppearanceInstancePtr m_beforePress;  // on the session's element, when a row was last pressed
    std::set<kiv::String> m_ofProject;          // ids of what was shown and belonged to the project
    std::set<kiv::String> m_deleted;
    bool m_applied = false;
};
