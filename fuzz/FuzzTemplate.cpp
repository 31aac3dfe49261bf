#include "FuzzSupport.h"

#include <kiv/AppearanceParser.h>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const kiv::String text(reinterpret_cast<const char*>(data), size);
    kiv::CParseError error;
    const kiv::CAppearanceTemplatePtr read =
        kiv::CAppearanceTemplate::FromJson(text, fuzz::manager().FindTemplate("Texture"), error);
    fuzz::require((read == nullptr) != error.empty(), "a refusal has a reason");
    if (!read)
        return 0;
    for (const kiv::CTemplateParameter& parameter : read->GetParameters())
        fuzz::require(read->GetDefaults().FindProperty(parameter.key) != nullptr, "each parameter has a default");
    const kiv::CAppearanceInstancePtr made = fuzz::manager().CreateAppearanceInstance(read, "name");
    fuzz::require(AreEqual(*made, *made->Clone(made->GetId())), "a copy is equal");
    kiv::CAppearanceParser parser(fuzz::manager());
    fuzz::require(!parser.AppearanceToString(made).empty(), "what the template makes can be written");
    return 0;
}
