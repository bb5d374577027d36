// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Referenced.h>

namespace vfApplication {

/// Body of CommandList; what it holds is for those who use one.
class VFAPPLICATION_EXPORT CommandListPrivate : public osg::Referenced
{
protected:
    ~CommandListPrivate() override;
};

/// A handle on a list of commands. Nothing in this library makes one.
///
/// Copies and assignment, by move too, share the body.
class VFAPPLICATION_EXPORT CommandList : public vfBase::Referenced
{
public:
    /// A handle without a body.
    CommandList() : d(nullptr) {}
    explicit CommandList(CommandListPrivate* body);

    /// A handle on the other's body if that is a CommandListPrivate, otherwise one without a body.
    explicit CommandList(const vfBase::Referenced& other);

    CommandList(const CommandList& other) = default;
    CommandList(CommandList&& other) : CommandList(static_cast<const CommandList&>(other)) {}
    ~CommandList() override;

    CommandList& operator=(const CommandList& other);
    CommandList& operator=(CommandList&& other) { return *this = static_cast<const CommandList&>(other); }

    CommandListPrivate* getImp() const { return d; }

private:
    CommandListPrivate* d;
};

} // namespace vfApplication
