#include "AppearanceDocumentReader.h"

#include "JsonDocument.h"
#include "JsonValue.h"

#include <kiv/AppearanceLibraryManager.h>

#include <algorithm>

namespace kiv {

namespace {

using simdjson::dom::element;
using simdjson::dom::object;

const char* const FallbackTemplateName = "Generic";
const char* const TextureTemplateName = "Texture";
const char* const TwiceReason = "the key stands here twice";

/// What the document said of a declared key so far.
enum EnSlotState : char { SlotDefault, SlotNull, SlotRead };

/// The type that a well-known key has without any declaration; null for another key.
CPropertyValuePtr wellKnownType(std::string_view key, bool isTexture)
{
    static const CPropertyValuePtr text = MakePropertyValue(String());
    static const CPropertyValuePtr number = MakePropertyValue(0);
    static const std::string_view texts[] = {"id", "name", "tags", "category"};
    if (std::find(std::begin(texts), std::end(texts), key) != std::end(texts) || (isTexture && key == "texture_file"))
        return text;
    return key == "edit_type" ? number : nullptr;
}

/// The template's name; empty when it is missing or no text.
std::string_view templateName(const object& fields)
{
    std::string_view name;
    return fields.at_key("template").get(name) ? std::string_view() : name;
}

CPropertyValuePtr copyOf(const CAppearanceInstance& prototype)
{
    auto copy = std::make_shared<CAppearanceInstance>();
    copy->Assign(prototype);
    return MakePropertyValue(std::move(copy));
}

}  // namespace

CAppearanceInstancePtr CAppearanceDocumentReader::Read(element document, CParseError& error)
{
    m_error = &error;
    error = {};
    object fields;
    if (document.get(fields)) {
        Refuse(error, "an appearance document is an object");
        return {};
    }
    auto appearance = std::make_shared<CAppearanceInstance>();
    return readAppearance(fields, nullptr, 1, *appearance) ? appearance : nullptr;
}

bool CAppearanceDocumentReader::readAppearance(const object& fields, const CAppearanceInstance* prototype, int depth,
                                               CAppearanceInstance& target)
{
    if (depth > MaxJsonDepth)
        return Refuse(*m_error, "nested deeper than " + std::to_string(MaxJsonDepth) + " levels");
    const std::string_view name = templateName(fields);
    if (name.empty())
        return refuseAt("template", "the template's name is missing or no text");
    return declare(name, prototype, target) && readFields(fields, depth, name == TextureTemplateName, target);
}

/// Gives the target the defaults that its template, or the prototype of a declared texture, declares.
bool CAppearanceDocumentReader::declare(std::string_view utf8Name, const CAppearanceInstance* prototype,
                                        CAppearanceInstance& target)
{
    String name;
    if (!ReadText(utf8Name, name, *m_error))
        return placeAt("template");
    if (!prototype) {
        declareByTemplate(name, target);
        return true;
    }
    if (name != prototype->GetTemplateName())
        return refuseAt("template", "expected \"" + prototype->GetTemplateName() + "\", found \"" + name + "\"");
    static_cast<CPropertySet&>(target) = *prototype;
    target.m_template = prototype->GetTemplate();
    return true;
}

void CAppearanceDocumentReader::declareByTemplate(const String& name, CAppearanceInstance& target)
{
    target.m_template = m_manager.FindTemplate(name);
    auto declaring = target.m_template;
    if (!declaring && name != TextureTemplateName)
        declaring = m_manager.FindTemplate(FallbackTemplateName);
    if (declaring)
        static_cast<CPropertySet&>(target) = declaring->GetDefaults();
}

/// Documents that were written here have their keys in order, as the defaults are: the walk goes in step with them and
/// searches only where it gets out of step.
bool CAppearanceDocumentReader::readFields(const object& fields, int depth, bool isTexture, CAppearanceInstance& target)
{
    SlotStates states(target.size(), SlotDefault);
    std::vector<Extra> extras;
    std::size_t slot = 0;
    for (const auto field : fields) {
        if (slot == states.size() || (*target.m_keys)[slot] != field.key)
            slot = target.IndexOf(field.key);
        if (slot == states.size()) {
            if (!readExtra(field.key, field.value, depth, isTexture, extras))
                return false;
        } else if (!readSlot(field, depth, states[slot], target.m_values[slot])) {
            return false;
        } else {
            ++slot;
        }
    }
    copyPrototypes(states, target);
    return addExtras(extras, target);
}

bool CAppearanceDocumentReader::readSlot(const simdjson::dom::key_value_pair& field, int depth, char& state,
                                         CPropertyValuePtr& slot)
{
    if (state != SlotDefault)
        return refuseAt(field.key, TwiceReason);
    state = field.value.is_null() ? SlotNull : SlotRead;
    return state == SlotNull || readDeclared(field.value, depth, slot) || placeAt(field.key);
}

/// The textures that the document leaves out become the appearance's own.
void CAppearanceDocumentReader::copyPrototypes(const SlotStates& states, CAppearanceInstance& target)
{
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (states[i] == SlotRead)
            continue;
        CPropertyValuePtr& value = target.m_values[i];
        if (const auto* prototype = value->TryGet<CAppearanceInstancePtr>())
            value = copyOf(**prototype);
    }
}

bool CAppearanceDocumentReader::readDeclared(element json, int depth, CPropertyValuePtr& slot)
{
    if (slot->GetType() == typeid(CAppearanceInstancePtr))
        return readTexture(json, depth, slot);
    return ReadTypedValue(json, slot, *m_error);
}

bool CAppearanceDocumentReader::readTexture(element json, int depth, CPropertyValuePtr& slot)
{
    object fields;
    if (json.get(fields))
        return Refuse(*m_error, "expected a texture");
    auto texture = std::make_shared<CAppearanceInstance>();
    if (!readAppearance(fields, slot->Get<CAppearanceInstancePtr>().get(), depth + 1, *texture))
        return false;
    slot = MakePropertyValue(std::move(texture));
    return true;
}

bool CAppearanceDocumentReader::readExtra(std::string_view key, element json, int depth, bool isTexture,
                                          std::vector<Extra>& extras)
{
    if (key.empty())
        return refuseAt(key, "a key is empty");
    String narrowKey;
    if (!ReadText(key, narrowKey, *m_error))
        return false;
    if (json.is_null() && wellKnownType(key, isTexture))
        return true;
    auto value = readUndeclared(key, json, depth, isTexture);
    if (!value)
        return placeAt(key);
    extras.emplace_back(std::move(narrowKey), std::move(value));
    return true;
}

CPropertyValuePtr CAppearanceDocumentReader::readUndeclared(std::string_view key, element json, int depth,
                                                            bool isTexture)
{
    if (CPropertyValuePtr value = wellKnownType(key, isTexture))
        return ReadTypedValue(json, value, *m_error) ? value : nullptr;
    object fields;
    if (!json.get(fields) && !templateName(fields).empty())
        return readSubAppearance(fields, depth);
    return ReadUntypedValue(json, depth + 1, *m_error);
}

CPropertyValuePtr CAppearanceDocumentReader::readSubAppearance(const object& fields, int depth)
{
    auto sub = std::make_shared<CAppearanceInstance>();
    return readAppearance(fields, nullptr, depth + 1, *sub) ? MakePropertyValue(std::move(sub)) : nullptr;
}

bool CAppearanceDocumentReader::addExtras(std::vector<Extra>& extras, CAppearanceInstance& target)
{
    if (extras.empty())
        return true;
    std::sort(extras.begin(), extras.end(), [](const Extra& a, const Extra& b) { return a.first < b.first; });
    const auto twice = std::adjacent_find(extras.begin(), extras.end(),
                                          [](const Extra& a, const Extra& b) { return a.first == b.first; });
    if (twice != extras.end())
        return refuseAt(twice->first, TwiceReason);
    for (const auto& [key, value] : extras)
        target.SetProperty(key, value);
    shareKeys(target);
    return true;
}

/// Documents of one origin have the same undeclared keys.
void CAppearanceDocumentReader::shareKeys(CAppearanceInstance& target)
{
    target.m_values.shrink_to_fit();
    if (m_lastKeys && *m_lastKeys == *target.m_keys)
        target.m_keys = m_lastKeys;
    else
        m_lastKeys = target.m_keys;
}

bool CAppearanceDocumentReader::refuseAt(std::string_view key, String reason)
{
    m_error->reason = std::move(reason);
    return placeAt(key);
}

/// Puts the key before the place of an error that comes from below it; answers false.
bool CAppearanceDocumentReader::placeAt(std::string_view key)
{
    m_error->place.insert(0, PointerSegment(key));
    return false;
}

}  // namespace kiv
