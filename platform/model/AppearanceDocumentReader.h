#pragma once

#include "JsonValue.h"

#include <kiv/AppearanceInstance.h>
#include <kiv/ParseError.h>

#include <simdjson.h>

#include <array>

namespace kiv {

class CAppearanceLibraryManager;

/// Makes appearances of parsed documents.
class CAppearanceDocumentReader {
public:
    explicit CAppearanceDocumentReader(const CAppearanceLibraryManager& manager) : m_manager(manager) {}

    /// Null with the reason; the error's place is then the JSON pointer in the document.
    CAppearanceInstancePtr Read(simdjson::dom::element document, CParseError& error);

private:
    struct Level;

    CAppearanceInstancePtr readAppearance(const simdjson::dom::object& fields, const CAppearanceInstance* prototype,
                                          int depth);
    bool declare(std::string_view name, const CAppearanceInstance* prototype, Level& level);
    void declareByTemplate(const String& name, Level& level);
    bool readFields(const simdjson::dom::object& fields, Level& level);
    bool readDeclared(const simdjson::dom::key_value_pair& field, std::size_t slot, Level& level);
    bool readSub(simdjson::dom::element json, const CAppearanceInstance* prototype, int depth, CPropertyValue& value);
    bool readExtra(const simdjson::dom::key_value_pair& field, Level& level);
    bool readUndeclared(const simdjson::dom::key_value_pair& field, int depth, CPropertyValue& value);
    void takeValues(Level& level);
    bool takeExtras(Level& level);
    void shareKeys(CAppearanceInstance& target);
    bool refuseAt(std::string_view key, String reason);
    bool placeAt(std::string_view key);

    const CAppearanceLibraryManager& m_manager;
    CParseError* m_error = nullptr;
    std::shared_ptr<CPropertySet::Keys> m_lastKeys;
    std::array<std::vector<CPropertyValue>, MaxJsonDepth> m_buffers;  ///< of the levels being read
};

}  // namespace kiv
