#include "AppearanceTargets.h"

kiv::CAppearanceInstancePtr AppearanceTarget::In(const kiv::CAppearanceLibraryPtr& library) const
{
    return library && appearance && library->FindInstance(id) == appearance ? appearance : nullptr;
}

CAppearanceTargets::CAppearanceTargets(const kiv::CAppearanceLibraryPtr& library, const QStringList& ids,
                                       const QString& current)
{
    m_targets.reserve(std::size_t(ids.size()));
    for (const QString& id : ids) {
        const kiv::String key = id.toLocal8Bit().toStdString();
        const kiv::CAppearanceInstancePtr appearance = library ? library->FindInstance(key) : nullptr;
        if (!appearance)
            continue;
        if (id == current)
            m_current = m_targets.size();
        m_targets.push_back({appearance, key});
    }
}

CAppearanceTargets::Appearances CAppearanceTargets::AllIn(const kiv::CAppearanceLibraryPtr& library) const
{
    Appearances appearances;
    appearances.reserve(m_targets.size());
    for (const AppearanceTarget& target : m_targets) {
        if (target.In(library))
            appearances.push_back(target.appearance);
    }
    return appearances;
}

AppearanceTarget CAppearanceTargets::Current() const
{
    return m_targets.empty() ? AppearanceTarget() : m_targets[m_current];
}
