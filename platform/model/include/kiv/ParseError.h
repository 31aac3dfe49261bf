#pragma once

#include <kiv/Types.h>

#include <vector>

namespace kiv {

/// What was wrong with something read, and where: `place` names the file and the JSON pointer or archive member in it
/// ("metals.json/appearances/12/diffuse_color"), `reason` is a sentence for a person ("expected 4 numbers, found 3").
struct CParseError {
    String place;
    String reason;

    bool empty() const { return reason.empty(); }
    String Text() const { return place.empty() ? reason : place + ": " + reason; }
};

/// Everything that was skipped while a folder or a library file was read, in the order met.
using CParseReport = std::vector<CParseError>;

}  // namespace kiv
