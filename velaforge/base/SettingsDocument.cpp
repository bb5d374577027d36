// SPDX-License-Identifier: MIT
#include <velaforge/base/SettingsDocument.h>

#include <velaforge/base/Utf8.h>

#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>

namespace vfBase {

using nlohmann::json;

struct SettingsDocument::Json
{
    json root = json::object();
};

namespace {

const char* const formatKey = "format";

// JSON knows only UTF-8, texts here hold any byte: others are written in hexadecimal behind this mark.
const std::string bytesMark = "$bytes:";

bool isUtf8(const std::string& text)
{
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t length = utf8SequenceLength(text, pos);
        if (length == 0)
            return false;
        pos += length;
    }
    return true;
}

std::string encoded(const std::string& text)
{
    if (isUtf8(text) && text.compare(0, bytesMark.size(), bytesMark) != 0)
        return text;
    static const char digits[] = "0123456789abcdef";
    std::string hexadecimal = bytesMark;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        hexadecimal += digits[byte >> 4];
        hexadecimal += digits[byte & 15];
    }
    return hexadecimal;
}

int digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

/// A mark without well-formed digits behind it, as a person may type it, is plain text.
std::string decoded(const std::string& text)
{
    if (text.compare(0, bytesMark.size(), bytesMark) != 0 || (text.size() - bytesMark.size()) % 2 != 0)
        return text;
    std::string bytes;
    for (std::size_t i = bytesMark.size(); i < text.size(); i += 2) {
        const int high = digitValue(text[i]);
        const int low = digitValue(text[i + 1]);
        if (high < 0 || low < 0)
            return text;
        bytes += static_cast<char>(high * 16 + low);
    }
    return bytes;
}

// JSON has no numbers for what is not finite; SettingsValue reads these texts as numbers.
json numberOrText(double value)
{
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value > 0 ? "Infinity" : "-Infinity";
    return value;
}

json toJson(const SettingsValue& value);

struct Writer
{
    json operator()(std::monostate) const { return nullptr; }
    json operator()(bool value) const { return value; }
    json operator()(std::int64_t value) const { return value; }
    json operator()(double value) const { return numberOrText(value); }
    json operator()(const std::string& value) const { return encoded(value); }
    json operator()(const SettingsValue::List& values) const
    {
        json list = json::array();
        for (const SettingsValue& value : values)
            list.push_back(toJson(value));
        return list;
    }
    json operator()(const SettingsValue::Map& values) const
    {
        json map = json::object();
        for (const auto& [key, value] : values)
            map[encoded(key)] = toJson(value);
        return map;
    }
};

json toJson(const SettingsValue& value)
{
    return std::visit(Writer(), value.variant());
}

SettingsValue fromJson(const json& value)
{
    switch (value.type()) {
    case json::value_t::boolean:
        return value.get<bool>();
    case json::value_t::number_integer:
        return value.get<std::int64_t>();
    case json::value_t::number_unsigned: {
        const auto number = value.get<std::uint64_t>();
        if (number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            return static_cast<double>(number);
        return static_cast<std::int64_t>(number);
    }
    case json::value_t::number_float:
        return value.get<double>();
    case json::value_t::string:
        return decoded(value.get_ref<const std::string&>());
    case json::value_t::array: {
        SettingsValue::List list;
        for (const json& entry : value)
            list.push_back(fromJson(entry));
        return list;
    }
    case json::value_t::object: {
        SettingsValue::Map map;
        for (const auto& [key, entry] : value.items())
            map[decoded(key)] = fromJson(entry);
        return map;
    }
    default:
        return {};
    }
}

/// The library's values are made and copied by recursion: the depth is looked at before it gets the text.
bool isTooDeep(const std::string& text)
{
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' || c == '[') {
            if (++depth > SettingsDocument::depthLimit)
                return true;
        } else if (c == '}' || c == ']') {
            --depth;
        }
    }
    return false;
}

const json* member(const json& object, const std::string& key)
{
    if (!object.is_object())
        return nullptr;
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

/// Entries merge by property, and properties that are maps by key.
void mergeInto(json& theirs, const json& mine, const json* base)
{
    for (const auto& [key, value] : mine.items()) {
        const json* before = base ? member(*base, key) : nullptr;
        if (before && *before == value)
            continue;
        const auto found = theirs.find(key);
        if (found != theirs.end() && found->is_object() && value.is_object())
            mergeInto(*found, value, before);
        else
            theirs[key] = value;
    }
    if (!base || !base->is_object())
        return;
    for (const auto& [key, before] : base->items()) {
        const json* now = member(theirs, key);
        if (!member(mine, key) && now && *now == before)
            theirs.erase(key);
    }
}

} // namespace

SettingsDocument::SettingsDocument() : m_json(std::make_unique<Json>())
{
    m_json->root[formatKey] = currentFormat;
}

SettingsDocument::SettingsDocument(const SettingsDocument& other)
    : m_json(std::make_unique<Json>(*other.m_json))
{}

SettingsDocument::SettingsDocument(SettingsDocument&& other) noexcept = default;

SettingsDocument& SettingsDocument::operator=(SettingsDocument other) noexcept
{
    m_json.swap(other.m_json);
    return *this;
}

SettingsDocument::~SettingsDocument() = default;

bool SettingsDocument::operator==(const SettingsDocument& other) const
{
    return m_json->root == other.m_json->root;
}

std::optional<SettingsDocument> SettingsDocument::parse(const std::string& text, std::string& reason)
{
    if (text.find_first_not_of('\0') == std::string::npos) {
        reason = text.empty() ? "it is empty" : "it holds nothing but zero bytes";
        return std::nullopt;
    }
    if (isTooDeep(text)) {
        reason = "it is nested deeper than " + std::to_string(depthLimit) + " levels";
        return std::nullopt;
    }
    SettingsDocument document;
    document.m_json->root = json::parse(text, nullptr, false);
    const json& root = document.m_json->root;
    if (root.is_discarded()) {
        reason = "it is cut off or not JSON";
        return std::nullopt;
    }
    const json* number = member(root, formatKey);
    if (!root.is_object() || (number && !number->is_number())) {
        reason = "it is not a settings file";
        return std::nullopt;
    }
    return document;
}

std::string SettingsDocument::text() const
{
    return m_json->root.dump(4, ' ', false, json::error_handler_t::replace) + "\n";
}

bool SettingsDocument::isOfKnownFormat() const
{
    const json* number = member(m_json->root, formatKey);
    if (!number)
        return true;
    // As a floating value every number is in range; none of those beyond 2^53 is known.
    const auto value = number->get<double>();
    return value >= 1 && value <= currentFormat && value == std::floor(value);
}

bool SettingsDocument::has(const std::string& entry) const
{
    return member(m_json->root, entry) != nullptr;
}

bool SettingsDocument::isEntry(const std::string& entry) const
{
    const json* found = member(m_json->root, entry);
    return found && found->is_object();
}

std::optional<SettingsValue> SettingsDocument::value(const std::string& entry,
                                                     const std::string& property) const
{
    const json* object = member(m_json->root, entry);
    const json* found = object ? member(*object, property) : nullptr;
    if (!found)
        return std::nullopt;
    return fromJson(*found);
}

void SettingsDocument::setValue(const std::string& entry, const std::string& property,
                                const SettingsValue& value)
{
    json& object = m_json->root[entry];
    if (!object.is_object())
        object = json::object();
    object[property] = toJson(value);
}

SettingsDocument SettingsDocument::merged(const SettingsDocument& base, const SettingsDocument& mine,
                                          const SettingsDocument& theirs)
{
    SettingsDocument result(theirs);
    mergeInto(result.m_json->root, mine.m_json->root, &base.m_json->root);
    result.m_json->root[formatKey] = currentFormat;
    return result;
}

} // namespace vfBase
