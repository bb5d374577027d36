// SPDX-License-Identifier: MIT
#include <velaforge/base/SettingsValue.h>

#include <cmath>
#include <limits>

namespace vfBase {

namespace {

template <class Integer>
bool readInteger(const SettingsValue::Variant& value, Integer& target)
{
    const auto* number = std::get_if<std::int64_t>(&value);
    if (!number || *number < static_cast<std::int64_t>(std::numeric_limits<Integer>::min()) ||
        *number > static_cast<std::int64_t>(std::numeric_limits<Integer>::max()))
        return false;
    target = static_cast<Integer>(*number);
    return true;
}

} // namespace

SettingsValue::SettingsValue(const StringList& value)
{
    List texts;
    for (unsigned int i = 0; i < value.size(); ++i)
        texts.emplace_back(value.get(i));
    m_value = texts;
}

bool SettingsValue::read(bool& target) const
{
    const auto* value = std::get_if<bool>(&m_value);
    if (value)
        target = *value;
    return value != nullptr;
}

bool SettingsValue::read(int& target) const
{
    return readInteger(m_value, target);
}

bool SettingsValue::read(unsigned int& target) const
{
    return readInteger(m_value, target);
}

bool SettingsValue::read(std::int64_t& target) const
{
    return readInteger(m_value, target);
}

bool SettingsValue::read(double& target) const
{
    if (const auto* real = std::get_if<double>(&m_value)) {
        target = *real;
        return true;
    }
    if (const auto* whole = std::get_if<std::int64_t>(&m_value)) {
        target = static_cast<double>(*whole);
        return true;
    }
    const auto* text = std::get_if<std::string>(&m_value);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (text && *text == "Infinity")
        target = infinity;
    else if (text && *text == "-Infinity")
        target = -infinity;
    else if (text && *text == "NaN")
        target = std::numeric_limits<double>::quiet_NaN();
    else
        return false;
    return true;
}

bool SettingsValue::read(float& target) const
{
    double value = 0;
    if (!read(value))
        return false;
    if (std::isfinite(value) && std::fabs(value) > static_cast<double>(std::numeric_limits<float>::max()))
        return false;
    target = static_cast<float>(value);
    return true;
}

bool SettingsValue::read(std::string& target) const
{
    const auto* value = std::get_if<std::string>(&m_value);
    if (value)
        target = *value;
    return value != nullptr;
}

bool SettingsValue::read(VfString& target) const
{
    std::string text;
    if (!read(text))
        return false;
    target = text;
    return true;
}

bool SettingsValue::read(StringList& target) const
{
    if (!list())
        return false;
    std::vector<VfString> texts;
    for (const SettingsValue& entry : *list()) {
        VfString text;
        if (!entry.read(text))
            return false;
        texts.push_back(text);
    }
    target.getImp()->entries.swap(texts);
    return true;
}

} // namespace vfBase
