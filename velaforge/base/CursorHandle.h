// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/LeakForProcess.h>
#include <velaforge/base/Referenced.h>

#include <osg/ref_ptr>

namespace vfBase {

/// The base class of the two cursors: handles on a shared body that has the position.
///
/// Copies share the cursor and move together; assignment makes a handle share the other's cursor.
template <class BodyType, class Target>
class VFBASE_TEMPLATE_EXPORT CursorHandle : public Referenced
{
public:
    /// The body of the cursor.
    using Body = BodyType;

    /// Makes an invalid cursor, without a body.
    CursorHandle() : d(nullptr) {}

    /// Makes a cursor at the front of @p container.
    explicit CursorHandle(const Target& container) : CursorHandle(atFront(container)) {}

    /// Makes a handle on @p body; null gives an invalid cursor.
    explicit CursorHandle(Body* body) : Referenced(body, true), d(body) {}

    /// Makes a handle on the body of @p other; an invalid cursor if that is no cursor of this kind.
    explicit CursorHandle(const Referenced& other) : CursorHandle(dynamic_cast<Body*>(other.getImp())) {}

    /// Shares the cursor of @p other.
    CursorHandle(const CursorHandle& other) = default;

    /// Shares the cursor of @p other.
    CursorHandle& operator=(const CursorHandle& other)
    {
        // Read first: releasing our own body may destroy other.
        Body* body = other.d;
        Referenced::operator=(other);
        d = body;
        return *this;
    }

    /// Shares the cursor of @p other; becomes invalid if that is no cursor of this kind.
    void setImp(const Referenced& other) override
    {
        const osg::ref_ptr<Body> body(dynamic_cast<Body*>(other.getImp()));
        Referenced::setImp(Referenced(body.get(), true));
        d = body.get();
    }

    /// Returns whether the cursor has a container.
    bool isValid() const override { return d && d->container.valid(); }

    /// Moves to the front of @p container. The former cursor is never released: other code may use it without
    /// a reference.
    void set(const Target& container)
    {
        leakForProcess(d);
        *this = CursorHandle(container);
    }

    /// Returns the body, null for an invalid cursor.
    Body* getImp() const { return d; }

protected:
    /// The body, null for an invalid cursor.
    Body* d;

private:
    static Body* atFront(const Target& container)
    {
        Target handle(container);
        return new Body(handle.getImp(), handle.getImp()->container->begin());
    }
};

} // namespace vfBase
