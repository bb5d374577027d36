// SPDX-License-Identifier: MIT
// The element types that the framework keeps in containers, each with every operation of the family.
#include <velaforge/base/AssociativeIterator.h>
#include <velaforge/base/Iterator.h>
#include <velaforge/base/List.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/Pair.h>
#include <velaforge/base/Set.h>
#include <velaforge/base/Vector.h>
#include <velaforge/base/VfString.h>
#include <velaforge/base/VfVariant.h>
#include <velaforge/dockwindows/DockWindowPrivate.h>
#include <velaforge/modules/Module.h>
#include <velaforge/shell/UiOptionsPage.h>

#include <osg/ref_ptr>

#include <gmock/gmock.h>

#include <memory>

using vfApplication::DockWindowPrivate;
using vfApplication::Module;
using vfApplication::UiOptionsPage;

// Every member function is compiled.
template class vfBase::Vector<std::shared_ptr<Module>>;
template class vfBase::Vector<UiOptionsPage*>;
template class vfBase::List<std::shared_ptr<Module>>;
template class vfBase::List<UiOptionsPage*>;
template class vfBase::List<vfBase::VfString>;
template class vfBase::List<osg::ref_ptr<DockWindowPrivate>>;
template class vfBase::Set<std::shared_ptr<Module>>;
template class vfBase::Map<vfBase::VfString, vfBase::VfString>;
template class vfBase::Map<vfBase::VfString, std::shared_ptr<Module>>;
template class vfBase::Map<vfBase::VfString, osg::ref_ptr<DockWindowPrivate>>;
template class vfBase::Map<vfBase::VfString, vfBase::VfVariant>;
template class vfBase::Pair<vfBase::VfString, vfBase::VfString>;
template class vfBase::Pair<vfBase::VfString, std::shared_ptr<Module>>;
template class vfBase::Pair<vfBase::VfString, osg::ref_ptr<DockWindowPrivate>>;
template class vfBase::Iterator<vfBase::Vector<std::shared_ptr<Module>>>;
template class vfBase::Iterator<vfBase::Vector<UiOptionsPage*>>;
template class vfBase::Iterator<vfBase::List<std::shared_ptr<Module>>>;
template class vfBase::Iterator<vfBase::Set<std::shared_ptr<Module>>>;
template class vfBase::AssociativeIterator<vfBase::Map<vfBase::VfString, vfBase::VfString>>;
template class vfBase::AssociativeIterator<vfBase::Map<vfBase::VfString, std::shared_ptr<Module>>>;
template class vfBase::AssociativeIterator<vfBase::Map<vfBase::VfString, osg::ref_ptr<DockWindowPrivate>>>;

namespace {

struct SomeModule : Module
{
    const char* getId() const override { return "test::SomeModule"; }
    const char* getModuleName() const override { return "Some"; }
};

/// A few elements, all different.
template <class T>
struct Elements;

template <>
struct Elements<std::shared_ptr<Module>>
{
    std::shared_ptr<Module> a = std::make_shared<SomeModule>();
    std::shared_ptr<Module> b = std::make_shared<SomeModule>();
};

template <>
struct Elements<UiOptionsPage*>
{
    UiOptionsPage pages[2];
    UiOptionsPage* a = &pages[0];
    UiOptionsPage* b = &pages[1];
};

template <>
struct Elements<vfBase::VfString>
{
    vfBase::VfString a = "a";
    vfBase::VfString b = "b";
};

template <>
struct Elements<osg::ref_ptr<DockWindowPrivate>>
{
    osg::ref_ptr<DockWindowPrivate> a = new DockWindowPrivate("id");
    osg::ref_ptr<DockWindowPrivate> b = new DockWindowPrivate("id");
};

template <>
struct Elements<vfBase::VfVariant>
{
    vfBase::VfVariant a = vfBase::VfVariant(1);
    vfBase::VfVariant b = vfBase::VfVariant("b");
};

} // namespace

template <class T>
class SequenceOf : public testing::Test
{};

using SequenceTypes = testing::Types<std::shared_ptr<Module>, UiOptionsPage*, vfBase::VfString,
                                     osg::ref_ptr<DockWindowPrivate>>;
TYPED_TEST_SUITE(SequenceOf, SequenceTypes, );

TYPED_TEST(SequenceOf, BehavesAlikeForEachElementType)
{
    const Elements<TypeParam> some;
    vfBase::List<TypeParam> list;
    list << some.a << some.b << some.a;
    EXPECT_EQ(2u, list.count(some.a));
    EXPECT_EQ(1u, list.indexOf(some.b, 0));
    EXPECT_EQ(2u, list.lastIndexOf(some.a, vfBase::List<TypeParam>::npos));
    EXPECT_EQ(TypeParam(), list.value(3));
    list.swap(0, 1);
    EXPECT_EQ(some.b, list.first());
    vfBase::Vector<TypeParam> vector = list.toVector();
    EXPECT_EQ(3u, vector.size());
    vector.fill(some.b, vfBase::Vector<TypeParam>::npos);
    EXPECT_EQ(3u, vector.count(some.b));
    EXPECT_EQ(2u, list.toSet().size());
    EXPECT_EQ(2u, list.removeAll(some.a));
    EXPECT_EQ(1u, list.size());
    EXPECT_EQ(some.b, list.takeFirst());
    EXPECT_TRUE(list.isEmpty());
}

template <class T>
class MapTo : public testing::Test
{};

using ValueTypes = testing::Types<vfBase::VfString, std::shared_ptr<Module>, osg::ref_ptr<DockWindowPrivate>,
                                  vfBase::VfVariant>;
TYPED_TEST_SUITE(MapTo, ValueTypes, );

TYPED_TEST(MapTo, BehavesAlikeForEachValueType)
{
    const Elements<TypeParam> some;
    vfBase::Map<vfBase::VfString, TypeParam> map;
    map.insert("one", some.a);
    map.insert("two", some.b);
    EXPECT_EQ(vfBase::VfString("two"), map.key(some.b));
    EXPECT_EQ(some.a, map.value("one"));
    EXPECT_EQ(TypeParam(), map.value("three"));
    EXPECT_EQ(2u, map.keys().size());
    EXPECT_EQ(some.b, map.values().last());
    EXPECT_TRUE(map.remove("one"));
    EXPECT_FALSE(map.contains("one"));
}

TEST(ContainerInstantiations, ASharedElementLivesAsLongAsAContainerHoldsIt)
{
    vfBase::Set<std::shared_ptr<Module>> set;
    std::weak_ptr<Module> watched;
    {
        const auto module = std::make_shared<SomeModule>();
        watched = module;
        set.insert(module);
    }
    EXPECT_FALSE(watched.expired());
    set.clear();
    EXPECT_TRUE(watched.expired());
}
