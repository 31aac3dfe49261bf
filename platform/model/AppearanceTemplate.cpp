#include <kiv/AppearanceTemplate.h>

#include "AppearanceTemplateReader.h"
#include "JsonDocument.h"

#include <algorithm>

namespace kiv {

const CTemplateParameter* CAppearanceTemplate::FindParameter(const String& key) const
{
    const auto found = std::lower_bound(m_parameters.begin(), m_parameters.end(), key,
                                        [](const CTemplateParameter& p, const String& k) { return p.key < k; });
    return found != m_parameters.end() && found->key == key ? &*found : nullptr;
}

CAppearanceTemplatePtr CAppearanceTemplate::FromJson(const String& text, const CAppearanceTemplatePtr& textures,
                                                     CParseError& error)
{
    error = {};
    CJsonDocument document;
    if (!document.Parse(text, error))
        return {};
    return CAppearanceTemplateReader(textures, error).Read(document.GetRoot());
}

}  // namespace kiv
