#include "FuzzSupport.h"

#include <kiv/AppearanceParser.h>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static kiv::CAppearanceParser parser(fuzz::manager());
    const kiv::String text(reinterpret_cast<const char*>(data), size);
    const kiv::CAppearanceInstancePtr appearance = parser.AppearanceFromString(text);
    fuzz::require((appearance == nullptr) != parser.GetLastError().empty(), "a refusal has a reason");
    if (appearance)
        fuzz::requireRoundTrip(appearance);
    return 0;
}
