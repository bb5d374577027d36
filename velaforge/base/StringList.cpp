// SPDX-License-Identifier: MIT
#include <velaforge/base/StringList.h>

namespace vfBase {

StringListPrivate::~StringListPrivate() = default;

StringList::StringList() : StringList(new StringListPrivate) {}

StringList::StringList(const Referenced& other) : StringList(dynamic_cast<StringListPrivate*>(other.getImp()))
{}

StringList& StringList::operator=(const StringList& other)
{
    // Read first: releasing our own body may destroy other.
    StringListPrivate* body = other.d;
    Referenced::operator=(other);
    d = body;
    return *this;
}

void StringList::setImp(const Referenced& other)
{
    *this = StringList(other);
}

VfString StringList::get(unsigned int index) const
{
    return index < size() ? d->entries[index] : VfString();
}

void StringList::append(const VfString& text)
{
    d->entries.push_back(text);
}

void StringList::insert(unsigned int index, const VfString& text)
{
    if (index <= size())
        d->entries.insert(d->entries.begin() + index, text);
}

void StringList::remove(unsigned int index)
{
    if (index < size())
        d->entries.erase(d->entries.begin() + index);
}

void StringList::clear()
{
    d->entries.clear();
}

StringList StringList::clone() const
{
    StringList copy;
    copy.d->entries = d->entries;
    return copy;
}

void StringList::resize(unsigned int count)
{
    d->entries.resize(count);
}

} // namespace vfBase
