// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/LeakForProcess.h>
#include <velaforge/base/Referenced.h>

#include <osg/ref_ptr>

namespace vfBase {

/// The operations that Iterator and AssociativeIterator share: a handle on a body that holds a container and
/// a position.
///
/// Copies share the cursor and move together; assignment rebinds to the other's cursor.
template <class BodyType, class Target>
class VFBASE_TEMPLATE_EXPORT CursorHandle : public Referenced
{
public:
    using Body = BodyType;

    /// A handle without a body, which is invalid.
    CursorHandle() : d(nullptr) {}

    /// A new cursor at the front of @p container.
    explicit CursorHandle(const Target& container) : CursorHandle(atFront(container)) {}

    /// A handle on @p body; null gives an invalid one.
    explicit CursorHandle(Body* body) : Referenced(body, true), d(body) {}

    /// A handle on the other's body if that is a cursor of this kind, otherwise an invalid one.
    explicit CursorHandle(const Referenced& other) : CursorHandle(dynamic_cast<Body*>(other.getImp())) {}

    /// Shares the other's cursor; both move together.
    CursorHandle(const CursorHandle& other) = default;

    /// Shares the other's cursor instead of the former one.
    CursorHandle& operator=(const CursorHandle& other)
    {
        Body* body = other.d; // read first: letting go of our own body may end other
        Referenced::operator=(other);
        d = body;
        return *this;
    }

    /// Shares the other's cursor if it is of this kind; otherwise the handle becomes invalid.
    void setImp(const Referenced& other) override
    {
        const osg::ref_ptr<Body> body(dynamic_cast<Body*>(other.getImp()));
        Referenced::setImp(Referenced(body.get(), true));
        d = body.get();
    }

    /// @return true when there is a container to move in
    bool isValid() const override { return d && d->container.valid(); }

    /// Makes a new cursor at the front of @p container. The former cursor is kept until the process ends,
    /// since other code may hold it uncounted.
    void set(const Target& container)
    {
        leakForProcess(d);
        *this = CursorHandle(container);
    }

    /// @return the body, uncounted; null for a handle without one
    Body* getImp() const { return d; }

protected:
    Body* d;

private:
    static Body* atFront(const Target& container)
    {
        Target handle(container);
        return new Body(handle.getImp(), handle.getImp()->container->begin());
    }
};

} // namespace vfBase
