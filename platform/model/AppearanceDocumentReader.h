#pragma once

#include <kiv/AppearanceInstance.h>
#include <kiv/ParseError.h>

#include <boost/container/small_vector.hpp>

#include <simdjson.h>

namespace kiv {

class CAppearanceLibraryManager;

/// Makes appearances of parsed documents.
class CAppearanceDocumentReader {
public:
    explicit CAppearanceDocumentReader(const CAppearanceLibraryManager& manager) : m_manager(manager) {}

    /// Null with the reason; the error's place is then the JSON pointer in the document.
    CAppearanceInstancePtr Read(simdjson::dom::element document, CParseError& error);

private:
    /// A key that the template does not declare.
    using Extra = std::pair<String, CPropertyValuePtr>;
    using SlotStates = boost::container::small_vector<char, 64>;

    bool readAppearance(const simdjson::dom::object& object, const CAppearanceInstance* prototype, int depth,
                        CAppearanceInstance& target);
    bool declare(std::string_view utf8Name, const CAppearanceInstance* prototype, CAppearanceInstance& target);
    void declareByTemplate(const String& name, CAppearanceInstance& target);
    bool readFields(const simdjson::dom::object& object, int depth, bool isTexture, CAppearanceInstance& target);
    bool readSlot(const simdjson::dom::key_value_pair& field, int depth, char& state, CPropertyValuePtr& slot);
    void copyPrototypes(const SlotStates& states, CAppearanceInstance& target);
    bool readDeclared(simdjson::dom::element json, int depth, CPropertyValuePtr& slot);
    bool readTexture(simdjson::dom::element json, int depth, CPropertyValuePtr& slot);
    bool readExtra(std::string_view key, simdjson::dom::element json, int depth, bool isTexture,
                   std::vector<Extra>& extras);
    CPropertyValuePtr readUndeclared(std::string_view key, simdjson::dom::element json, int depth, bool isTexture);
    CPropertyValuePtr readSubAppearance(const simdjson::dom::object& object, int depth);
    bool addExtras(std::vector<Extra>& extras, CAppearanceInstance& target);
    void shareKeys(CAppearanceInstance& target);
    bool refuseAt(std::string_view key, String reason);
    bool placeAt(std::string_view key);

    const CAppearanceLibraryManager& m_manager;
    CParseError* m_error = nullptr;
    std::shared_ptr<CPropertySet::Keys> m_lastKeys;
};

}  // namespace kiv
