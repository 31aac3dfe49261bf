#pragma once

#include "AppearanceLibraryBrowserCtrl.h"

#include <QStringList>

/// One appearance that an operation was asked for. It is known by its object and its id, since until the operation is
/// carried out the library may have lost it, or have another object of the same id.
struct AppearanceTarget {
    kiv::CAppearanceInstancePtr appearance;
    kiv::String id;

    /// The appearance if the library still has it, otherwise null.
    kiv::CAppearanceInstancePtr In(const kiv::CAppearanceLibraryPtr& library) const;
};

/// The appearances that a menu was opened for, or that were selected when a key was pressed. The default is none.
class CAppearanceTargets {
public:
    using Appearances = CAppearanceLibraryBrowserCtrl::Appearances;

    CAppearanceTargets() = default;
    /// Those of the ids that the library has. `current` is the one that an operation on a single appearance takes, if
    /// it is among them, otherwise it takes the first.
    CAppearanceTargets(const kiv::CAppearanceLibraryPtr& library, const QStringList& ids, const QString& current);

    const std::vector<AppearanceTarget>& All() const { return m_targets; }
    Appearances AllIn(const kiv::CAppearanceLibraryPtr& library) const;
    AppearanceTarget Current() const;

private:
    std::vector<AppearanceTarget> m_targets;
    std::size_t m_current = 0;
};
