#include "AppearanceDocumentReader.h"

#include "JsonDocument.h"
#include "JsonValue.h"
#include "NarrowText.h"

#include <kiv/AppearanceLibraryManager.h>

#include <boost/container/small_vector.hpp>

#include <algorithm>

namespace kiv {

namespace {

using simdjson::dom::element;
using simdjson::dom::object;

const char* const FallbackTemplateName = "Generic";
const char* const TextureTemplateName = "Texture";
const char* const TwiceReason = "the key stands here twice";

bool isWellKnownText(std::string_view key)
{
    static const std::string_view texts[] = {"id", "name", "tags", "category"};
    return std::find(std::begin(texts), std::end(texts), key) != std::end(texts);
}

/// The type, as a value of it, that a well-known key has without any declaration; null for another key.
const CPropertyValue* wellKnownType(std::string_view key, bool isTexture)
{
    static const CPropertyValue text{String()};
    static const CPropertyValue number{0};
    if (isWellKnownText(key) || (isTexture && key == "texture_file"))
        return &text;
    return key == "edit_type" ? &number : nullptr;
}

/// The template's name; empty when it is missing or no text, or when this is no object.
template <typename Json>
std::string_view templateName(const Json& json)
{
    std::string_view name;
    return json.at_key("template").get(name) ? std::string_view() : name;
}

/// The default itself, or for a texture, which no two appearances may share, a copy of the prototype.
CPropertyValuePtr ownDefault(const CPropertyValuePtr& value)
{
    const auto* prototype = value->TryGet<CAppearanceInstancePtr>();
    if (!prototype)
        return value;
    auto copy = std::make_shared<CAppearanceInstance>();
    copy->Assign(**prototype);
    return MakePropertyValue(std::move(copy));
}

/// What reads such a text as one that ends there would take the appearance for another.
bool holdsZeroCharacter(const simdjson::dom::key_value_pair& field)
{
    std::string_view text;
    return isWellKnownText(field.key) && !field.value.get(text) && text.find('\0') != std::string_view::npos;
}

bool holdsNothing(const CPropertyValue& value)
{
    return value.TryGet<std::monostate>() != nullptr;
}

}  // namespace

/// One appearance while its object is walked.
struct CAppearanceDocumentReader::Level {
    Level(int depth_, std::vector<CPropertyValue>& buffer) : depth(depth_), own(buffer) { own.clear(); }

    CAppearanceInstancePtr target = std::make_shared<CAppearanceInstance>();
    const CPropertySet* declared = nullptr;  ///< with the defaults
    CAppearanceTemplatePtr declaring;        ///< keeps `declared`
    int depth;
    bool isTexture = false;
    boost::container::small_vector<bool, 64> seen;          ///< by slot
    std::vector<CPropertyValue>& own;                       ///< the values that differ from their defaults
    boost::container::small_vector<std::size_t, 64> slots;  ///< of `own`
    std::vector<std::pair<String, CPropertyValue>> extras;
};

CAppearanceInstancePtr CAppearanceDocumentReader::Read(element document, CParseError& error)
{
    m_error = &error;
    error = {};
    object fields;
    if (!document.get(fields))
        return readAppearance(fields, nullptr, 1);
    Refuse(error, "an appearance document is an object");
    return {};
}

CAppearanceInstancePtr CAppearanceDocumentReader::readAppearance(const object& fields,
                                                                 const CAppearanceInstance* prototype, int depth)
{
    if (depth > MaxJsonDepth) {
        Refuse(*m_error, "nested deeper than " + std::to_string(MaxJsonDepth) + " levels");
        return {};
    }
    Level level(depth, m_buffers[std::size_t(depth - 1)]);
    const bool isRead = declare(templateName(fields), prototype, level) && readFields(fields, level);
    if (!isRead)
        return {};
    takeValues(level);
    return takeExtras(level) ? level.target : nullptr;
}

/// Finds the defaults that the template, or the prototype of a declared texture, declares.
bool CAppearanceDocumentReader::declare(std::string_view utf8Name, const CAppearanceInstance* prototype, Level& level)
{
    static const CPropertySet nothing;
    if (utf8Name.empty())
        return refuseAt("template", "the template's name is missing or no text");
    const String name = NarrowFromUtf8(utf8Name);
    level.declared = prototype ? prototype : &nothing;
    level.isTexture = name == TextureTemplateName;
    if (!prototype)
        declareByTemplate(name, level);
    else if (name != prototype->GetTemplateName())
        return refuseAt("template", "expected \"" + prototype->GetTemplateName() + "\", found \"" + name + "\"");
    else
        level.target->m_template = prototype->GetTemplate();
    level.seen.resize(level.declared->size());
    return true;
}

void CAppearanceDocumentReader::declareByTemplate(const String& name, Level& level)
{
    level.declaring = level.target->m_template = m_manager.FindTemplate(name);
    if (!level.declaring && !level.isTexture)
        level.declaring = m_manager.FindTemplate(FallbackTemplateName);
    if (level.declaring)
        level.declared = &level.declaring->GetDefaults();
}

/// Documents that were written here have their keys in order, as the defaults are: the walk goes in step with them and
/// searches only where it gets out of step.
bool CAppearanceDocumentReader::readFields(const object& fields, Level& level)
{
    const CPropertySet& declared = *level.declared;
    std::size_t slot = 0;
    for (const auto field : fields) {
        if (holdsZeroCharacter(field))
            return refuseAt(field.key, "the text holds a zero character");
        if (slot == declared.size() || (*declared.m_keys)[slot] != field.key)
            slot = declared.IndexOf(field.key);
        if (slot == declared.size()) {
            if (!readExtra(field, level))
                return false;
        } else if (!readDeclared(field, slot++, level)) {
            return false;
        }
    }
    return true;
}

bool CAppearanceDocumentReader::readDeclared(const simdjson::dom::key_value_pair& field, std::size_t slot, Level& level)
{
    if (level.seen[slot])
        return refuseAt(field.key, TwiceReason);
    level.seen[slot] = true;
    if (field.value.is_null())
        return true;
    const CPropertyValue& like = *level.declared->m_values[slot];
    const auto* prototype = like.TryGet<CAppearanceInstancePtr>();
    CPropertyValue& value = level.own.emplace_back();
    if (prototype ? !readSub(field.value, prototype->get(), level.depth, value)
                  : !ReadTypedValue(field.value, like, value, *m_error))
        return placeAt(field.key);
    if (holdsNothing(value))
        level.own.pop_back();
    else
        level.slots.push_back(slot);
    return true;
}

bool CAppearanceDocumentReader::readSub(element json, const CAppearanceInstance* prototype, int depth,
                                        CPropertyValue& value)
{
    object fields;
    if (json.get(fields))
        return Refuse(*m_error, "expected a texture");
    auto sub = readAppearance(fields, prototype, depth + 1);
    if (!sub)
        return false;
    value = CPropertyValue(std::move(sub));
    return true;
}

bool CAppearanceDocumentReader::readExtra(const simdjson::dom::key_value_pair& field, Level& level)
{
    if (field.key.empty())
        return refuseAt(field.key, "a key is empty");
    const CPropertyValue* wellKnown = wellKnownType(field.key, level.isTexture);
    if (wellKnown && field.value.is_null())
        return true;
    CPropertyValue value;
    if (wellKnown ? !ReadTypedValue(field.value, *wellKnown, value, *m_error)
                  : !readUndeclared(field, level.depth, value))
        return placeAt(field.key);
    if (wellKnown && holdsNothing(value))
        value = *wellKnown;
    level.extras.emplace_back(NarrowFromUtf8(field.key), std::move(value));
    return true;
}

bool CAppearanceDocumentReader::readUndeclared(const simdjson::dom::key_value_pair& field, int depth,
                                               CPropertyValue& value)
{
    if (templateName(field.value).empty())
        return ReadUntypedValue(field.value, depth + 1, value, *m_error);
    return readSub(field.value, nullptr, depth, value);
}

/// The values that the document gave lie in one block, which each of them keeps: fewer and smaller allocations.
void CAppearanceDocumentReader::takeValues(Level& level)
{
    CAppearanceInstance& target = *level.target;
    target.m_keys = level.declared->m_keys;
    target.m_values.resize(level.declared->size());
    const auto block = std::make_shared<std::vector<CPropertyValue>>(std::make_move_iterator(level.own.begin()),
                                                                     std::make_move_iterator(level.own.end()));
    for (std::size_t i = 0; i < block->size(); ++i)
        target.m_values[level.slots[i]] = CPropertyValuePtr(block, &(*block)[i]);
    for (std::size_t slot = 0; slot < target.m_values.size(); ++slot) {
        if (!target.m_values[slot])
            target.m_values[slot] = ownDefault(level.declared->m_values[slot]);
    }
}

bool CAppearanceDocumentReader::takeExtras(Level& level)
{
    auto& extras = level.extras;
    if (extras.empty())
        return true;
    std::sort(extras.begin(), extras.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    const auto twice = std::adjacent_find(extras.begin(), extras.end(),
                                          [](const auto& a, const auto& b) { return a.first == b.first; });
    if (twice != extras.end())
        return refuseAt(twice->first, TwiceReason);
    for (auto& [key, value] : extras)
        level.target->SetProperty(key, MakePropertyValue(std::move(value)));
    shareKeys(*level.target);
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
