// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Referenced.h>

namespace vfApplication {

/// Body of CommandList, empty here: programs that use command lists derive from it.
class VFAPPLICATION_EXPORT CommandListPrivate : public osg::Referenced
{
protected:
    ~CommandListPrivate() override;
};

/// A handle on a list of commands. This library neither makes nor reads one.
///
/// Copying, moving and assignment share the body.
class VFAPPLICATION_EXPORT CommandList : public vfBase::Referenced
{
public:
    /// Makes a handle without a body.
    CommandList() : d(nullptr) {}

    /// Makes a handle on @p body, which may be null.
    explicit CommandList(CommandListPrivate* body);

    /// Makes a handle on the body of @p other; one without a body if that is no CommandListPrivate.
    explicit CommandList(const vfBase::Referenced& other);

    /// Shares the body of @p other.
    CommandList(const CommandList& other) = default;

    /// Shares the body of @p other, which keeps it.
    CommandList(CommandList&& other) : CommandList(static_cast<const CommandList&>(other)) {}
    ~CommandList() override;

    /// Shares the body of @p other.
    CommandList& operator=(const CommandList& other);

    /// Shares the body of @p other, which keeps it.
    CommandList& operator=(CommandList&& other) { return *this = static_cast<const CommandList&>(other); }

    /// Returns the body, null if there is none. The handle keeps its reference.
    CommandListPrivate* getImp() const { return d; }

private:
    CommandListPrivate* d;
};

} // namespace vfApplication
