// SPDX-License-Identifier: MIT
#include <velaforge/base/SettingsDocument.h>

#include <velaforge/base/SettingsText.h>

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <list>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace vfBase {

using nlohmann::json;

struct SettingsDocument::Json
{
    json root = json::object();
};

namespace {

const char* const formatKey = "format";

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
    json operator()(const std::string& value) const { return encodedSettingsText(value); }
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
            map[encodedSettingsText(key)] = toJson(value);
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
        return decodedSettingsText(value.get_ref<const std::string&>());
    case json::value_t::array: {
        SettingsValue::List list;
        for (const json& entry : value)
            list.push_back(fromJson(entry));
        return list;
    }
    case json::value_t::object: {
        SettingsValue::Map map;
        for (const auto& [key, entry] : value.items())
            map[decodedSettingsText(key)] = fromJson(entry);
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

void mergeInto(json& theirs, const json& mine, const json* base);

/// Merges a value that both have and that mine has changed.
void mergeValue(json& theirs, const json& mine, const json* base);

/// @return what an element of a list is recognised by: a text by itself, an object by its text "id", "path"
///         or "name", another object by all it holds; nothing for any other kind of value
std::optional<std::string> identity(const json& element)
{
    if (element.is_string())
        return "text " + element.get_ref<const std::string&>();
    if (!element.is_object())
        return std::nullopt;
    for (const char* key : {"id", "path", "name"}) {
        const json* name = member(element, key);
        if (name && name->is_string())
            return std::string(key) + " " + name->get_ref<const std::string&>();
    }
    return "object " + element.dump(-1, ' ', false, json::error_handler_t::replace);
}

/// A list as an ordered set: its elements, found by their identities.
struct ElementSet
{
    std::vector<std::string> identities;
    std::unordered_map<std::string, std::size_t> positions;

    bool has(const std::string& element) const { return positions.count(element) != 0; }

    /// @return nothing for a list that is no set: it holds other values than texts and objects, or one of
    ///         them twice
    static std::optional<ElementSet> of(const json& list)
    {
        ElementSet set;
        for (const json& element : list) {
            std::optional<std::string> name = identity(element);
            if (!name || !set.positions.emplace(*name, set.identities.size()).second)
                return std::nullopt;
            set.identities.push_back(std::move(*name));
        }
        return set;
    }
};

/// Merges two lists that are sets. Elements that either side has added or removed are added or removed; an
/// element that one side has removed and the other has changed inside stays. Elements that mine has added or
/// moved stand behind their predecessors in mine, those without one in front; all others keep the order of
/// theirs.
class ListMerge
{
public:
    /// @return nothing when one of the lists is no set
    static std::optional<json> merged(const json& theirs, const json& mine, const json& base)
    {
        const auto theirSet = ElementSet::of(theirs);
        const auto mySet = ElementSet::of(mine);
        const auto baseSet = ElementSet::of(base);
        if (!theirSet || !mySet || !baseSet)
            return std::nullopt;
        return ListMerge(theirs, *theirSet, mine, *mySet, base, *baseSet).run();
    }

private:
    using Result = std::list<json>;

    ListMerge(const json& theirs, const ElementSet& theirSet, const json& mine, const ElementSet& mySet,
              const json& base, const ElementSet& baseSet)
        : m_theirs(theirs),
          m_theirSet(theirSet),
          m_mine(mine),
          m_mySet(mySet),
          m_base(base),
          m_baseSet(baseSet)
    {}

    json run()
    {
        findMoved();
        for (std::size_t i = 0; i < m_theirs.size(); ++i) {
            const std::string& name = m_theirSet.identities[i];
            const bool isRemovedByMe = m_baseSet.has(name) && !m_mySet.has(name);
            if (m_moved.count(name) == 0 && (!isRemovedByMe || hasChanged(m_theirs[i], name)))
                m_placed[name] = m_result.insert(m_result.end(), valueOf(name));
        }
        auto behind = m_result.begin();
        for (std::size_t i = 0; i < m_mine.size(); ++i) {
            const std::string& name = m_mySet.identities[i];
            const auto placed = m_placed.find(name);
            const bool isRemovedByThem = m_baseSet.has(name) && !m_theirSet.has(name);
            if (placed != m_placed.end())
                behind = std::next(placed->second);
            else if (!isRemovedByThem || hasChanged(m_mine[i], name))
                behind = std::next(m_result.insert(behind, valueOf(name)));
        }
        json list = json::array();
        for (json& element : m_result)
            list.push_back(std::move(element));
        return list;
    }

    /// Seen from the end of mine, an element that stood behind one that follows it now was moved forward.
    void findMoved()
    {
        std::size_t lowest = m_baseSet.identities.size();
        for (auto name = m_mySet.identities.rbegin(); name != m_mySet.identities.rend(); ++name) {
            const auto before = m_baseSet.positions.find(*name);
            if (before != m_baseSet.positions.end() && before->second < lowest)
                lowest = before->second;
            else
                m_moved.insert(*name);
        }
    }

    bool hasChanged(const json& element, const std::string& name) const
    {
        return element != m_base[m_baseSet.positions.at(name)];
    }

    /// @return the element as mine, theirs, or both have changed it
    json valueOf(const std::string& name) const
    {
        const auto my = m_mySet.positions.find(name);
        const auto their = m_theirSet.positions.find(name);
        if (my == m_mySet.positions.end())
            return m_theirs[their->second];
        if (their == m_theirSet.positions.end())
            return m_mine[my->second];
        json value = m_theirs[their->second];
        const auto before = m_baseSet.positions.find(name);
        const json* old = before == m_baseSet.positions.end() ? nullptr : &m_base[before->second];
        if (!old || *old != m_mine[my->second])
            mergeValue(value, m_mine[my->second], old);
        return value;
    }

    const json& m_theirs;
    const ElementSet& m_theirSet;
    const json& m_mine;
    const ElementSet& m_mySet;
    const json& m_base;
    const ElementSet& m_baseSet;

    std::unordered_set<std::string> m_moved; ///< what mine has added too
    Result m_result;
    std::unordered_map<std::string, Result::iterator> m_placed;
};

void mergeValue(json& theirs, const json& mine, const json* base)
{
    if (theirs.is_object() && mine.is_object()) {
        mergeInto(theirs, mine, base);
        return;
    }
    std::optional<json> list;
    if (theirs.is_array() && mine.is_array())
        list = ListMerge::merged(theirs, mine, base && base->is_array() ? *base : json::array());
    theirs = list ? std::move(*list) : mine;
}

/// Merges objects by key.
void mergeInto(json& theirs, const json& mine, const json* base)
{
    for (const auto& [key, value] : mine.items()) {
        const json* before = base ? member(*base, key) : nullptr;
        if (before && *before == value)
            continue;
        const auto found = theirs.find(key);
        if (found != theirs.end())
            mergeValue(*found, value, before);
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
        reason = text.empty() ? "it is empty" : "it has only zero bytes";
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
