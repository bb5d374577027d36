// SPDX-License-Identifier: MIT
#include <velaforge/commands/CommandName.h>

#include <cstddef>

namespace vfApplication {

/// The texts that a thread used last: a hash table with one text per slot.
class CommandName::Recent
{
public:
    Recent() { s_current = this; }
    Recent(const Recent&) = delete;
    Recent& operator=(const Recent&) = delete;

    ~Recent() { s_current = nullptr; }

    /// Returns a text equal to @p text. The caller takes a reference on it before it makes the next name.
    static const Text* get(const std::string& text)
    {
        Recent* recent = s_current ? s_current : makeForThread();
        return recent ? recent->find(text) : new Text(text);
    }

private:
    static constexpr std::size_t placeCount = 64;

    static Recent* makeForThread()
    {
        // Null again if an object that is destroyed at the end of the thread makes a name.
        static thread_local Recent recent;
        return s_current;
    }

    static std::size_t placeOf(const std::string& text)
    {
        const auto at = [&](std::size_t i) -> std::size_t { return static_cast<unsigned char>(text[i]); };
        return (text.size() + 3 * at(0) + 5 * at(text.size() / 2) + 7 * at(text.size() - 1)) % placeCount;
    }

    const Text* find(const std::string& text)
    {
        osg::ref_ptr<const Text>& place = m_texts[placeOf(text)];
        if (!place || place->value != text)
            place = new Text(text);
        return place.get();
    }

    static thread_local Recent* s_current;

    osg::ref_ptr<const Text> m_texts[placeCount];
};

thread_local CommandName::Recent* CommandName::Recent::s_current = nullptr;

CommandName::Text::~Text() = default;

CommandName::CommandName(const std::string& text) : m_text(text.empty() ? nullptr : Recent::get(text)) {}

const std::string& CommandName::str() const noexcept
{
    static const std::string empty;
    return m_text ? m_text->value : empty;
}

} // namespace vfApplication
