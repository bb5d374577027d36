// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Referenced.h>
#include <velaforge/base/VfString.h>

#include <type_traits>
#include <vector>

namespace vfBase {

/// Body of StringList.
class VFBASE_EXPORT StringListPrivate : public osg::Referenced
{
public:
    std::vector<VfString> entries;

protected:
    ~StringListPrivate() override;
};

/// A list of texts; positions count from 0.
///
///     vfBase::StringList names;
///     names.append("hull");
///     names.insert(0, "mast");
///     names.get(0);  // "mast"
///
/// A handle: copies and assignment share one list.
class VFBASE_EXPORT StringList : public Referenced
{
public:
    /// An empty list.
    StringList();

    /// A list of @p count empty texts.
    template <class Count, class = std::enable_if_t<std::is_integral_v<Count>>>
    explicit StringList(Count count) : StringList()
    {
        resize(static_cast<unsigned int>(count));
    }

    /// A handle on @p body; null gives a handle without a list.
    explicit StringList(StringListPrivate* body) : Referenced(body, true), d(body) {}

    /// A handle on the other's body if that is a list of texts, otherwise a handle without one.
    explicit StringList(const Referenced& other);

    /// Shares the other's list.
    StringList(const StringList& other) = default;

    /// Shares the other's list instead of the former one.
    StringList& operator=(const StringList& other);

    /// Shares the other's list if it is one of texts; otherwise the handle has none.
    void setImp(const Referenced& other) override;

    /// @return number of entries
    unsigned int size() const { return static_cast<unsigned int>(d->entries.size()); }

    /// @return true when there is no entry
    bool isEmpty() const { return d->entries.empty(); }

    /// @return a copy of the entry at @p index, the empty text for an index out of range
    VfString get(unsigned int index) const;

    /// Adds an entry at the end.
    void append(const VfString& text);

    /// Inserts before @p index; an index equal to size() appends, one beyond it does nothing.
    void insert(unsigned int index, const VfString& text);

    /// Removes the entry at @p index; does nothing for an index out of range.
    void remove(unsigned int index);

    /// Removes all entries, for every handle on this list.
    void clear();

    /// @return a new list with the same entries
    StringList clone() const;

    /// @return the body, uncounted; null for a handle without a list
    StringListPrivate* getImp() const { return d; }

private:
    void resize(unsigned int count);

    StringListPrivate* d;
};

} // namespace vfBase
