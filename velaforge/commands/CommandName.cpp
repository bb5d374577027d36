// SPDX-License-Identifier: MIT
#include <velaforge/commands/CommandName.h>

#include <atomic>
#include <cstddef>
#include <utility>

namespace vfApplication {

struct CommandName::Text
{
    explicit Text(const std::string& aText) : text(aText) {}

    Text* hold() noexcept
    {
        holders.fetch_add(1, std::memory_order_relaxed);
        return this;
    }

    void release() noexcept
    {
        if (holders.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

    const std::string text;
    std::atomic<std::size_t> holders{1};
};

/// The texts that a thread used last: a hash table with one text per slot.
class CommandName::Recent
{
public:
    Recent() { s_current = this; }
    Recent(const Recent&) = delete;
    Recent& operator=(const Recent&) = delete;

    ~Recent()
    {
        s_current = nullptr;
        for (Text* text : m_texts) {
            if (text)
                text->release();
        }
    }

    /// Returns a text equal to @p text, with a reference for the caller.
    static Text* get(const std::string& text)
    {
        Recent* recent = s_current ? s_current : makeForThread();
        return recent ? recent->find(text)->hold() : new Text(text);
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

    Text* find(const std::string& text)
    {
        Text*& place = m_texts[placeOf(text)];
        if (!place || place->text != text) {
            Text* made = new Text(text);
            if (place)
                place->release();
            place = made;
        }
        return place;
    }

    static thread_local Recent* s_current;

    Text* m_texts[placeCount] = {};
};

thread_local CommandName::Recent* CommandName::Recent::s_current = nullptr;

CommandName::CommandName(const std::string& text) : m_text(text.empty() ? nullptr : Recent::get(text)) {}

CommandName::CommandName(const CommandName& other) noexcept
    : m_text(other.m_text ? other.m_text->hold() : nullptr)
{}

CommandName::~CommandName()
{
    if (m_text)
        m_text->release();
}

CommandName& CommandName::operator=(CommandName other) noexcept
{
    std::swap(m_text, other.m_text);
    return *this;
}

const std::string& CommandName::str() const noexcept
{
    static const std::string empty;
    return m_text ? m_text->text : empty;
}

} // namespace vfApplication
