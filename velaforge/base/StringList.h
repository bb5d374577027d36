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
    /// The texts, in order.
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
    /// Makes an empty list.
    StringList();

    /// Makes a list of @p count empty texts.
    template <class Count, class = std::enable_if_t<std::is_integral_v<Count>>>
    explicit StringList(Count count) : StringList()
    {
        resize(static_cast<unsigned int>(count));
    }

    /// Makes a handle on @p body; null gives a handle without a list.
    explicit StringList(StringListPrivate* body) : Referenced(body, true), d(body) {}

    /// Makes a handle on the body of @p other; one without a list if that is no list of texts.
    explicit StringList(const Referenced& other);

    /// Shares the list of @p other.
    StringList(const StringList& other) = default;

    /// Shares the list of @p other.
    StringList& operator=(const StringList& other);

    void setImp(const Referenced& other) override;

    /// Returns the number of entries.
    unsigned int size() const { return static_cast<unsigned int>(d->entries.size()); }

    /// Returns whether there are no entries.
    bool isEmpty() const { return d->entries.empty(); }

    /// Returns the entry at @p index; the empty text for a position out of range.
    VfString get(unsigned int index) const;

    /// Adds @p text at the end.
    void append(const VfString& text);

    /// Inserts @p text before @p index. An index equal to size() appends; a larger one does nothing.
    void insert(unsigned int index, const VfString& text);

    /// Removes the entry at @p index. Does nothing for a position out of range.
    void remove(unsigned int index);

    /// Removes all entries, for every handle on this list.
    void clear();

    /// Returns a new list with the same entries.
    StringList clone() const;

    /// Returns the body, null for a handle without a list.
    StringListPrivate* getImp() const { return d; }

private:
    void resize(unsigned int count);

    StringListPrivate* d;
};

} // namespace vfBase
