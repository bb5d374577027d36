// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/LeakForProcess.h>
#include <velaforge/base/Referenced.h>

#include <osg/ref_ptr>

namespace vfBase {

/// What the two cursors share: handles on one body that says where they stand.
///
/// Copies share the cursor and move together; assignment rebinds to the other's cursor.
template <class BodyType, class Target>
class VFBASE_TEMPLATE_EXPORT CursorHandle : public Referenced
{
public:
    using Body = BodyType;

    /// Without a body, and so invalid.
    CursorHandle() : d(nullptr) {}

    /// At the front of @p container.
    explicit CursorHandle(const Target& container) : CursorHandle(atFront(container)) {}

    /// A handle on @p body; null gives an invalid one.
    explicit CursorHandle(Body* body) : Referenced(body, true), d(body) {}

    /// A handle on the other's body if that is a cursor of this kind, otherwise an invalid one.
    explicit CursorHandle(const Referenced& other) : CursorHandle(dynamic_cast<Body*>(other.getImp())) {}

    CursorHandle(const CursorHandle& other) = default;
    CursorHandle& operator=(const CursorHandle& other)
    {
        Body* body = other.d; // read first: letting go of our own body may end other
        Referenced::operator=(other);
        d = body;
        return *this;
    }

    void setImp(const Referenced& other) override
    {
        const osg::ref_ptr<Body> body(dynamic_cast<Body*>(other.getImp()));
        Referenced::setImp(Referenced(body.get(), true));
        d = body.get();
    }

    /// @return true when there is a container to move in
    bool isValid() const override { return d && d->container.valid(); }

    /// Starts anew at the front of @p container. The former cursor is never released: other parties may still
    /// hold it uncounted.
    void set(const Target& container)
    {
        leakForProcess(d);
        *this = CursorHandle(container);
    }

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
