#include "HostFixture.h"

#include <kiv/AppearanceParser.h>

HostFixture::HostFixture()
{
    m_options.data = MATERIAL_DATA_DIR;
    m_options.profile = m_folder.path();
    m_options.language = "en";
    const std::wstring data = m_options.data.toStdWString();
    if (!m_library.Open({data, data + L"/textures", m_options.profile.toStdWString()}))
        qFatal("the shipped material library cannot be opened");
}

kiv::CAppearanceInstancePtr HostFixture::systemMaterial(const kiv::String& name)
{
    for (const auto& entry : *manager().GetSystemLibrary())
        if (entry.second->GetName() == name)
            return entry.second;
    qFatal("the system library has no %s", name.c_str());
}

QByteArray HostFixture::document(const kiv::CAppearanceInstancePtr& appearance)
{
    return QByteArray::fromStdString(kiv::CAppearanceParser(manager()).AppearanceToString(appearance));
}
