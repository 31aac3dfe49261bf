#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QAbstractItemView>

#include <functional>

class QDropEvent;

/// Lets files with appearances, and appearances dragged from elsewhere, be dropped on views. What is refused is refused
/// while it is dragged over them, so that the pointer shows it. What is dropped is announced when the drop is over: the
/// receiver may ask something, and whoever drags would wait for the answer.
class CAppearanceDrop : public QObject {
    Q_OBJECT

public:
    /// The library that a drop would change; null while nothing may be dropped.
    using Target = std::function<kiv::CAppearanceLibraryPtr()>;

    /// The manager, whose libraries an appearance may come from, is borrowed.
    CAppearanceDrop(kiv::CAppearanceLibraryManager& manager, Target target, QObject* parent);

    void Watch(QAbstractItemView& view);

signals:
    /// Paths of this machine, all ".ggm" or ".json".
    void FilesDropped(const QStringList& files);
    /// An appearance of another library than the target, with all its textures here.
    void AppearanceDropped(const kiv::CAppearanceInstancePtr& appearance);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void handle(QDropEvent& event, bool isDrop);
    bool isOwn(const QObject* source) const;
    kiv::CAppearanceInstancePtr find(const QDropEvent& event, const kiv::CAppearanceLibrary& target) const;
    void announce(const QStringList& files, const kiv::CAppearanceInstancePtr& appearance);

    kiv::CAppearanceLibraryManager& m_manager;
    Target m_target;
    QList<QAbstractItemView*> m_views;  ///< borrowed, and only compared
};
