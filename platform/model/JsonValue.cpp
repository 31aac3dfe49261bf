#include "JsonValue.h"

#include "JsonDocument.h"
#include "JsonText.h"
#include "NarrowText.h"
#include "RawJson.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace kiv {

namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

/// Numbers, switches, vectors and matrices.
template <typename T>
constexpr bool IsPlain = std::is_trivially_copyable_v<T> && !std::is_empty_v<T>;

const char* kindOf(element json)
{
    switch (json.type()) {
    case element_type::ARRAY:
        return "a list";
    case element_type::OBJECT:
        return "an object";
    case element_type::STRING:
        return "a text";
    case element_type::BOOL:
        return "true or false";
    case element_type::NULL_VALUE:
        return "null";
    case element_type::DOUBLE:
        return "a number with a fraction";
    default:
        return "a whole number";
    }
}

bool refuseKind(const char* expected, element json, CParseError& error)
{
    return Refuse(error, String("expected ") + expected + ", found " + kindOf(json));
}

/// Bit by bit, so that -0.0 is not taken for the 0.0 of a default.
template <typename T>
bool store(const T& like, const T& read, CPropertyValue& value)
{
    if (std::memcmp(&like, &read, sizeof(T)) != 0)  // NOLINT(bugprone-suspicious-memory-comparison)
        value = CPropertyValue(read);
    return true;
}

bool fitsInt(std::int64_t number)
{
    return number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
}

bool readNumber(element json, float& value, CParseError& error)
{
    double number = 0;
    if (json.get(number))
        return refuseKind("a number", json, error);
    // Half a unit in the last place above the largest float, from where on it would become infinity.
    if (std::abs(number) >= 0x1.ffffffp127)
        return Refuse(error, "the number is too large");
    value = float(number);
    return true;
}

// readLike reads a value of the type of `like`.

bool readLike(const float& like, element json, CPropertyValue& value, CParseError& error)
{
    float read = 0;
    return readNumber(json, read, error) && store(like, read, value);
}

bool readLike(const int& like, element json, CPropertyValue& value, CParseError& error)
{
    std::int64_t read = 0;
    if (!json.is<std::int64_t>() && !json.is<std::uint64_t>())
        return refuseKind("a whole number", json, error);
    if (json.get(read) || !fitsInt(read))
        return Refuse(error, "the number is too large");
    return store(like, int(read), value);
}

bool readLike(const bool& like, element json, CPropertyValue& value, CParseError& error)
{
    bool read = false;
    return json.get(read) ? refuseKind("true or false", json, error) : store(like, read, value);
}

bool readLike(const String& like, element json, CPropertyValue& value, CParseError& error)
{
    std::string_view utf8;
    if (json.get(utf8))
        return refuseKind("a text", json, error);
    String read = NarrowFromUtf8(utf8);
    if (like != read)
        value = CPropertyValue(std::move(read));
    return true;
}

String pluralNumbers(std::size_t count)
{
    return std::to_string(count) + (count == 1 ? " number" : " numbers");
}

bool readFloats(element json, float* values, std::size_t count, CParseError& error)
{
    simdjson::dom::array list;
    if (json.get(list))
        return refuseKind(("a list of " + pluralNumbers(count)).c_str(), json, error);
    if (list.size() != count)
        return Refuse(error, "expected " + pluralNumbers(count) + ", found " + std::to_string(list.size()));
    std::size_t i = 0;
    for (const element entry : list) {
        if (!readNumber(entry, values[i], error)) {
            error.place.insert(0, PointerSegment(std::to_string(i)));
            return false;
        }
        ++i;
    }
    return true;
}

/// Vectors and matrices are nothing but their floats in order.
template <typename T>
bool readLike(const T& like, element json, CPropertyValue& value, CParseError& error)
{
    constexpr std::size_t count = sizeof(T) / sizeof(float);
    float values[count];
    if (!readFloats(json, values, count, error))
        return false;
    T read;
    std::memcpy(static_cast<void*>(&read), values, sizeof(read));
    return store(like, read, value);
}

/// Whether the number is written as a float as it is written as a double.
bool isFloat(double number)
{
    if (std::abs(number) >= 0x1.ffffffp127)
        return false;
    String asDouble;
    String asFloat;
    AppendJsonNumber(asDouble, number);
    AppendJsonNumber(asFloat, float(number));
    return asDouble == asFloat;
}

bool isFloatList(const simdjson::dom::array& list)
{
    for (const element entry : list) {
        if (entry.type() != element_type::DOUBLE || !isFloat(entry))
            return false;
    }
    return true;
}

bool readRaw(element json, int depth, CPropertyValue& value, CParseError& error)
{
    CRawJson raw;
    if (!WriteRawJson(json, depth, raw.text, error))
        return false;
    value = CPropertyValue(std::move(raw));
    return true;
}

template <typename T>
bool readVector(element json, CPropertyValue& value, CParseError& error)
{
    value = CPropertyValue(T());
    return readLike(T(), json, value, error);
}

bool readList(element json, int depth, CPropertyValue& value, CParseError& error)
{
    const simdjson::dom::array list = json;
    const std::size_t size = isFloatList(list) ? list.size() : 0;
    switch (size) {
    case 2:
        return readVector<CVec2<float>>(json, value, error);
    case 3:
        return readVector<CVec3<float>>(json, value, error);
    case 4:
        return readVector<CVec4<float>>(json, value, error);
    case 9:
        return readVector<CMatrix3<float>>(json, value, error);
    default:
        return readRaw(json, depth, value, error);
    }
}

bool set(CPropertyValue& value, CPropertyValue read)
{
    value = std::move(read);
    return true;
}

}  // namespace

bool ReadTypedValue(element json, const CPropertyValue& like, CPropertyValue& value, CParseError& error)
{
    return like.Visit([&](const auto& held) {
        using T = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<T, String> || IsPlain<T>)
            return readLike(held, json, value, error);
        else
            return Refuse(error, "the template's default has a type that no document holds");
    });
}

bool ReadUntypedValue(element json, int depth, CPropertyValue& value, CParseError& error)
{
    switch (json.type()) {
    case element_type::BOOL:
        return set(value, CPropertyValue(bool(json)));
    case element_type::STRING:
        return set(value, CPropertyValue(NarrowFromUtf8(json)));
    case element_type::INT64:
        return fitsInt(json) ? set(value, CPropertyValue(int(std::int64_t(json)))) : readRaw(json, depth, value, error);
    case element_type::DOUBLE:
        return isFloat(json) ? set(value, CPropertyValue(float(double(json)))) : readRaw(json, depth, value, error);
    case element_type::ARRAY:
        return readList(json, depth, value, error);
    default:
        return readRaw(json, depth, value, error);
    }
}

}  // namespace kiv
