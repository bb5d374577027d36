// SPDX-License-Identifier: MIT
#include "support/Slots.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/LeakForProcess.h>
#include <velaforge/base/Observer.h>
#include <velaforge/base/RefObject.h>
#include <velaforge/base/Referenced.h>

#include <osg/Observer>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using vfBase::Referenced;
using vfTest::slotOf;

namespace {

class Body : public osg::Referenced
{
public:
    static int s_alive;

    explicit Body(int number = 0) : value(number) { ++s_alive; }
    int value;

    /// Something else that goes with this body.
    vfBase::Referenced kept;

protected:
    ~Body() override { --s_alive; }
};
int Body::s_alive = 0;

} // namespace

TEST(Referenced, TwoHandlesOnOneBodyAreEqualAndOnTwoBodiesAreNot)
{
    const Referenced a(new Body(1), true);
    const Referenced b = a;
    const Referenced c(new Body(1), true);
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a != c);
    EXPECT_EQ(a.getUniqueId(), b.getUniqueId());
    EXPECT_NE(a.getUniqueId(), c.getUniqueId());
    EXPECT_TRUE((a < c) != (c < a));
    EXPECT_FALSE(a < b);
}

TEST(Referenced, TheBodyGoesWithTheLastHandle)
{
    {
        Referenced a(new Body, true);
        {
            const Referenced b = a;
            EXPECT_EQ(2, b.getImp()->referenceCount());
        }
        EXPECT_EQ(1, Body::s_alive);
        a = Referenced();
        EXPECT_EQ(0, Body::s_alive);
        a = Referenced(new Body, false);
        EXPECT_EQ(1, Body::s_alive);
    }
    EXPECT_EQ(0, Body::s_alive);
}

TEST(Referenced, InvalidHasNoBodyAndCopiesOfItCanBeUsed)
{
    EXPECT_FALSE(Referenced::invalid().isValid());
    Referenced copy = Referenced::invalid();
    EXPECT_EQ(nullptr, copy.getImp());
    copy = Referenced(new Body, true);
    EXPECT_TRUE(copy.isValid());
    EXPECT_FALSE(Referenced::invalid().isValid());
    EXPECT_EQ(&Referenced::invalid(), &Referenced::invalid());
}

TEST(Referenced, TakesANullBody)
{
    const Referenced none(nullptr, true);
    EXPECT_FALSE(none.isValid());
    EXPECT_TRUE(none == Referenced());
    EXPECT_EQ(0u, none.getUniqueId());
}

TEST(Referenced, AssignmentToItselfKeepsTheBody)
{
    Referenced a(new Body(3), true);
    Referenced& alias = a;
    a = alias;
    EXPECT_EQ(3, static_cast<Body*>(a.getImp())->value);
}

TEST(Referenced, AssigningAHandleThatOnlyTheOldBodyKeepsAliveIsSafe)
{
    auto* outer = new Body(1);
    Referenced handle(outer, true);
    outer->kept = Referenced(new Body(2), true);
    handle = outer->kept;
    EXPECT_EQ(2, static_cast<Body*>(handle.getImp())->value);
    EXPECT_EQ(1, Body::s_alive);
}

TEST(Referenced, SetImpTakesOverTheOthersBody)
{
    Referenced a;
    const Referenced b(new Body, true);
    a.setImp(b);
    EXPECT_TRUE(a == b);
}

TEST(Referenced, CountsByHandAndObservesAsTheBodyDoes)
{
    const Referenced a(new Body, true);
    EXPECT_EQ(2, a.ref());
    EXPECT_EQ(1, a.unref());
    EXPECT_EQ(2, a.ref());
    EXPECT_EQ(1, a.unref_nodelete());
    const Referenced none;
    EXPECT_EQ(0, none.ref());
    EXPECT_EQ(0, none.unref());
    EXPECT_EQ(0, none.unref_nodelete());
}

TEST(Referenced, HandlesMayBeCopiedAndDestroyedOnSeveralThreads)
{
    const Referenced shared(new Body, true);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&shared] {
            for (int n = 0; n < 20000; ++n) {
                const Referenced copy = shared;
                Referenced other;
                other = copy;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(1, shared.getImp()->referenceCount());
}

TEST(Referenced, InvalidIsMadeOnceForTwoThreadsAtOnce)
{
    const Referenced* seen[2] = {};
    std::thread first([&seen] { seen[0] = &Referenced::invalid(); });
    std::thread second([&seen] { seen[1] = &Referenced::invalid(); });
    first.join();
    second.join();
    EXPECT_EQ(seen[0], seen[1]);
    EXPECT_NE(nullptr, seen[0]);
}

TEST(Referenced, OperationsKeepTheirSlots)
{
    EXPECT_EQ(0, slotOf(&vfBase::VfObject::getClassInfo));
    EXPECT_EQ(3, slotOf(&vfBase::VfObject::getUniqueId));
    const std::vector<int> slots = {slotOf(&Referenced::setImp),
                                    slotOf(&Referenced::setThreadSafeRefUnref),
                                    slotOf(&Referenced::ref),
                                    slotOf(&Referenced::unref),
                                    slotOf(&Referenced::unref_nodelete),
                                    slotOf(&Referenced::isValid),
                                    slotOf(&Referenced::addObserver),
                                    slotOf(&Referenced::removeObserver),
                                    slotOf(&Referenced::getOrCreateObserverSet)};
    for (std::size_t i = 1; i < slots.size(); ++i)
        EXPECT_EQ(slots[i - 1] + 1, slots[i]) << i;
}

TEST(LeakForProcess, ALeakedBodyStaysAlive)
{
    {
        const Referenced handle(new Body(5), true);
        vfBase::leakForProcess(handle.getImp());
        vfBase::leakForProcess(static_cast<const osg::Referenced*>(nullptr));
        vfBase::leakForProcess(static_cast<const void*>(nullptr));
    }
    EXPECT_EQ(1, Body::s_alive);
}

namespace {

struct Witness : osg::Observer
{
    void objectDeleted(void*) override { ++told; }
    int told = 0;
};

} // namespace

TEST(Referenced, TellsObserversWhenTheBodyGoes)
{
    Witness witness;
    Witness removed;
    vfBase::ObserverSet set;
    {
        const Referenced a(new Body, true);
        a.addObserver(vfBase::Observer(&witness));
        a.addObserver(vfBase::Observer(&removed));
        a.removeObserver(vfBase::Observer(&removed));
        a.addObserver(vfBase::Observer());
        set = a.getOrCreateObserverSet();
        EXPECT_EQ(a.getImp(), set.getObserved());
        EXPECT_EQ(0, witness.told);
    }
    EXPECT_EQ(1, witness.told);
    EXPECT_EQ(0, removed.told);
    EXPECT_EQ(nullptr, set.getObserved());
    EXPECT_FALSE(Referenced().getOrCreateObserverSet().isValid());
}

namespace {

struct Derived : vfBase::RefObject
{
    static int s_destroyed;

protected:
    ~Derived() override { ++s_destroyed; }
};
int Derived::s_destroyed = 0;

} // namespace

TEST(RefObject, IsABodyThatGoesWithItsLastHandle)
{
    {
        const Referenced handle(new Derived, true);
        EXPECT_EQ(0, Derived::s_destroyed);
    }
    EXPECT_EQ(1, Derived::s_destroyed);
}
