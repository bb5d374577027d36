// SPDX-License-Identifier: MIT
// The idioms for lifetimes: watches, running calls, pairs, singletons, copies and requirements.
#include <velaforge/base/CopyGroup.h>
#include <velaforge/base/CrosswisePair.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/ProcessSingleton.h>
#include <velaforge/base/Require.h>
#include <velaforge/base/SettingsBase.h>

#include <osg/Referenced>
#include <osg/ref_ptr>

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <thread>

using vfBase::CopyGroup;
using vfBase::LifeWatch;
using vfBase::RunningCall;

namespace {

struct Watched
{
    ~Watched() { LifeWatch<Watched>::end(this); }
    int value = 7;
};

const vfBase::Call closing{"Watched::close"};
const vfBase::Call saving{"Watched::save"};

} // namespace

TEST(LifeWatch, TellsWhenItsObjectIsDestroyed)
{
    auto object = std::make_unique<Watched>();
    const LifeWatch<Watched> watch(object.get());
    const LifeWatch<Watched> second(object.get());
    EXPECT_FALSE(watch.isGone());
    EXPECT_EQ(object.get(), watch.get());
    object.reset();
    EXPECT_TRUE(watch.isGone());
    EXPECT_TRUE(second.isGone());
    EXPECT_EQ(nullptr, watch.get());
}

TEST(LifeWatch, KnowsAnotherObjectAtTheSameAddressFromItsOwn)
{
    alignas(Watched) unsigned char place[sizeof(Watched)];
    auto* first = new (place) Watched;
    const LifeWatch<Watched> watch(first);
    first->~Watched();
    auto* second = new (place) Watched;
    const LifeWatch<Watched> other(second);
    EXPECT_TRUE(watch.isGone());
    EXPECT_FALSE(other.isGone());
    second->~Watched();
    EXPECT_TRUE(other.isGone());
}

TEST(LifeWatch, OnNothingReportsNoEnd)
{
    const LifeWatch<Watched> watch(nullptr);
    delete new Watched;
    EXPECT_FALSE(watch.isGone());
    EXPECT_EQ(nullptr, watch.get());
}

TEST(LifeWatch, MayEndBeforeWatchesThatWereMadeBeforeIt)
{
    Watched* object = new Watched;
    auto first = std::make_unique<LifeWatch<Watched>>(object);
    auto second = std::make_unique<LifeWatch<Watched>>(object);
    auto third = std::make_unique<LifeWatch<Watched>>(object);
    second.reset();
    first.reset();
    delete object;
    EXPECT_TRUE(third->isGone());
}

TEST(LifeWatch, OfOneThreadIsNotThatOfAnother)
{
    Watched object;
    const LifeWatch<Watched> watch(&object);
    std::thread([] {
        const Watched other;
        const LifeWatch<Watched> otherWatch(&other);
        EXPECT_FALSE(otherWatch.isGone());
    }).join();
    EXPECT_FALSE(watch.isGone());
}

TEST(RunningCall, IsKnownOfItsObjectAndItsOperationWhileItsScopeLasts)
{
    const Watched object;
    const Watched other;
    EXPECT_FALSE(RunningCall<Watched>::isRunning(&object, closing));
    {
        const RunningCall<Watched> running(&object, closing);
        EXPECT_TRUE(RunningCall<Watched>::isRunning(&object, closing));
        EXPECT_FALSE(RunningCall<Watched>::isRunning(&object, saving));
        EXPECT_FALSE(RunningCall<Watched>::isRunning(&other, closing));
    }
    EXPECT_FALSE(RunningCall<Watched>::isRunning(&object, closing));
}

TEST(RunningCall, EndsWithItsObject)
{
    alignas(Watched) unsigned char place[sizeof(Watched)];
    auto* first = new (place) Watched;
    const RunningCall<Watched> running(first, closing);
    first->~Watched();
    EXPECT_TRUE(running.isGone());
    auto* second = new (place) Watched;
    EXPECT_FALSE(RunningCall<Watched>::isRunning(second, closing));
    second->~Watched();
}

namespace {

struct Body;

struct Handle
{
    Handle();
    ~Handle();
    Body* d;
    static int count;
};

struct Body : osg::Referenced
{
    Handle* owner = nullptr;
    static int count;
    Body() { ++count; }

protected:
    ~Body() override
    {
        --count;
        vfBase::crosswise::endBody(owner, &Handle::d);
    }
};

int Handle::count = 0;
int Body::count = 0;

Handle::Handle() : d(new Body)
{
    ++count;
    d->ref();
    vfBase::crosswise::setOwner(d->owner, this);
}

Handle::~Handle()
{
    --count;
    vfBase::crosswise::endHandle(d, &Body::owner);
}

} // namespace

TEST(CrosswisePair, TheHandleMayBeDestroyedFirst)
{
    auto* handle = new Handle;
    const osg::ref_ptr<Body> body = handle->d;
    delete handle;
    EXPECT_EQ(nullptr, body->owner);
    EXPECT_EQ(1, Body::count);
    EXPECT_EQ(1, body->referenceCount());
}

TEST(CrosswisePair, TheBodyMayBeDestroyedFirstAndTakesTheHandleAlong)
{
    auto* handle = new Handle;
    handle->d->unref();
    EXPECT_EQ(0, Handle::count);
    EXPECT_EQ(0, Body::count);
}

TEST(CrosswisePair, BothGoWithAHandleThatAloneHoldsTheBody)
{
    delete new Handle;
    EXPECT_EQ(0, Handle::count);
    EXPECT_EQ(0, Body::count);
}

TEST(CrosswisePair, ANewOwnerReplacesTheFormerOneAndTheSameOneStays)
{
    auto* first = new Handle;
    Handle second;
    const osg::ref_ptr<Body> body = second.d;
    vfBase::crosswise::setOwner(body->owner, &second);
    EXPECT_EQ(2, Handle::count);
    Handle* owner = first;
    vfBase::crosswise::setOwner(owner, &second);
    EXPECT_EQ(&second, owner);
    EXPECT_EQ(1, Handle::count);
}

namespace {

struct Single
{
    Single() { ++made; }
    ~Single()
    {
        ++ended;
        seenAtEnd = instance(false);
        if (isLoud)
            std::fputs(seenAtEnd ? "there is one\n" : "there is none\n", stderr);
    }
    static Single* instance(bool erase)
    {
        return vfBase::processSingleton(erase, [] { return std::make_unique<Single>(); });
    }
    static int made;
    static int ended;
    static bool isLoud;
    static Single* seenAtEnd;
};

int Single::made = 0;
int Single::ended = 0;
bool Single::isLoud = false;
Single* Single::seenAtEnd = nullptr;

} // namespace

TEST(ProcessSingleton, IsMadeOnceAndNotAgainAfterItWasErased)
{
    Single* single = Single::instance(false);
    EXPECT_EQ(single, Single::instance(false));
    EXPECT_EQ(1, Single::made);
    EXPECT_EQ(nullptr, Single::instance(true));
    EXPECT_EQ(1, Single::ended);
    EXPECT_EQ(nullptr, Single::seenAtEnd) << "its destructor found the object itself";
    EXPECT_EQ(nullptr, Single::instance(false));
    EXPECT_EQ(nullptr, Single::instance(true));
    EXPECT_EQ(1, Single::made);
}

TEST(ProcessSingleton, IsReleasedAtExitAndNullForWhoAsksLater)
{
    EXPECT_EXIT(
        {
            static struct Late
            {
                ~Late() { std::fputs(Single::instance(false) ? "late: one\n" : "late: none\n", stderr); }
            } late;
            Single::isLoud = true;
            Single::instance(false);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^there is none\nlate: none\n$");
}

TEST(CopyGroup, TheFirstThatIsDestroyedDeletesWhatAllShare)
{
    const int first = 0;
    const int second = 0;
    const int third = 0;
    const int other = 0;
    EXPECT_TRUE(CopyGroup::end(&other));
    CopyGroup::join(&second, &first);
    CopyGroup::join(&third, &second);
    EXPECT_TRUE(CopyGroup::end(&second));
    EXPECT_FALSE(CopyGroup::end(&first));
    EXPECT_FALSE(CopyGroup::end(&third));
    EXPECT_TRUE(CopyGroup::end(&first)) << "another object at that address";
    EXPECT_TRUE(CopyGroup::end(&other));
}

TEST(CopyGroup, AnObjectThatLeftDeletesItsOwn)
{
    const int first = 0;
    const int second = 0;
    CopyGroup::join(&second, &first);
    CopyGroup::leave(&first);
    EXPECT_TRUE(CopyGroup::end(&first));
    EXPECT_TRUE(CopyGroup::end(&second));
    CopyGroup::join(&first, &first);
    EXPECT_TRUE(CopyGroup::end(&first));
}

TEST(Require, EndsTheProcessWithOneLineThatNamesTheOperation)
{
    VF_REQUIRE(true, "Plan::open", "nothing");
    EXPECT_DEATH(VF_REQUIRE(false, "Plan::open", "the path is null"),
                 "^velaFORGE: Plan::open: the path is null\n$");
}

TEST(Require, KnowsTheThreadOfTheApplication)
{
    EXPECT_TRUE(vfBase::isApplicationThread());
    vfBase::adoptApplicationThread();
    EXPECT_TRUE(vfBase::isApplicationThread());
    bool isOwn = true;
    std::thread([&isOwn] { isOwn = vfBase::isApplicationThread(); }).join();
    EXPECT_FALSE(isOwn);
    std::thread([] { vfBase::adoptApplicationThread(); }).join();
    EXPECT_FALSE(vfBase::isApplicationThread());
}

#ifndef NDEBUG
TEST(Require, EndsADebugBuildWhereAnotherThreadCallsWhatBelongsToTheApplication)
{
    vfBase::adoptApplicationThread();
    EXPECT_DEATH(std::thread([] { VF_REQUIRE_APPLICATION_THREAD("Plan::open"); }).join(),
                 "^velaFORGE: Plan::open: called on another thread than Application::run\n$");
}
#endif
