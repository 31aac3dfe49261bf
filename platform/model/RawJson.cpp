#include "RawJson.h"

#include "JsonDocument.h"
#include "JsonText.h"
#include "JsonValue.h"

#include <algorithm>
#include <vector>

namespace kiv {

namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

class CRawJsonWriter {
public:
    CRawJsonWriter(String& json, CParseError& error) : m_json(json), m_error(error) {}

    bool Append(element json, int depth)
    {
        switch (json.type()) {
        case element_type::ARRAY:
            return depth <= MaxJsonDepth ? appendList(json, depth) : refuseDepth();
        case element_type::OBJECT:
            return depth <= MaxJsonDepth ? appendObject(json, depth) : refuseDepth();
        case element_type::STRING:
            AppendJsonString(m_json, json);
            return true;
        case element_type::DOUBLE:
            AppendJsonNumber(m_json, double(json));
            return true;
        default:
            m_json += simdjson::minify(json);
            return true;
        }
    }

private:
    bool refuseDepth() { return Refuse(m_error, "nested deeper than " + std::to_string(MaxJsonDepth) + " levels"); }

    bool appendList(const simdjson::dom::array& list, int depth)
    {
        char separator = '[';
        std::size_t index = 0;
        for (const element entry : list) {
            m_json += separator;
            separator = ',';
            if (!Append(entry, depth + 1))
                return placed(std::to_string(index));
            ++index;
        }
        m_json += separator == '[' ? "[]" : "]";
        return true;
    }

    /// In key order, as the whole document is.
    bool appendObject(const simdjson::dom::object& object, int depth)
    {
        std::vector<simdjson::dom::key_value_pair> fields;
        for (const auto field : object)
            fields.push_back(field);
        std::sort(fields.begin(), fields.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
        char separator = '{';
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (i > 0 && fields[i - 1].key == fields[i].key)
                return Refuse(m_error, "the key stands here twice") || placed(fields[i].key);
            m_json += separator;
            separator = ',';
            AppendJsonString(m_json, fields[i].key);
            m_json += ':';
            if (!Append(fields[i].value, depth + 1))
                return placed(fields[i].key);
        }
        m_json += separator == '{' ? "{}" : "}";
        return true;
    }

    bool placed(std::string_view key)
    {
        m_error.place.insert(0, PointerSegment(key));
        return false;
    }

    String& m_json;
    CParseError& m_error;
};

}  // namespace

bool WriteRawJson(element json, int depth, String& text, CParseError& error)
{
    return CRawJsonWriter(text, error).Append(json, depth);
}

}  // namespace kiv
